#pragma once
// The still pictures of a TV play, drawn here: a stage in the play's own colours with its
// speakers as figures, the one speaking in the part of the play the picture stands for raised
// and given a speech bubble with the line's beginning.

#include "course_sources.h"

#include <QByteArray>
#include <QImage>

namespace vt::coursepack {

inline constexpr int kPictureWidth = 320;
inline constexpr int kPictureHeight = 240;

// Picture index (1..count) of a play.
QImage DrawPlayPicture(const Lesson& play, int index, int count);
// The JPEG bytes of an image (fixed quality, so the same picture gives the same bytes).
QByteArray JpegBytes(const QImage& image);

} // namespace vt::coursepack
