#pragma once
// The stroke traces of the 200 writing samples, from the stroke medians of the npm package
// hanzi-writer-data (Make Me a Hanzi): each median is laid into the drawing area in twips and
// resampled into points close enough to be drawn one by one with a pen.

#include "core/stroke_offsets.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace vt::coursepack {

// Distance between two points of a stroke, in twips.
inline constexpr double kStrokeStep = 45.0;

// The points of a character from its hanzi-writer-data JSON: each stroke's points followed by a
// separator. Empty when the JSON has no medians.
std::vector<StrokePoint> TraceFromJson(const QByteArray& json, int* strokeCount = nullptr);

// The JSON file of a character in <npmDir>/node_modules/hanzi-writer-data.
QString StrokeJsonPath(const QString& npmDir, QChar character);

} // namespace vt::coursepack
