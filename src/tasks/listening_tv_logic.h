#pragma once
// The rules of the TV-play task without a widget: the play's text with numbered lines, the play
// list, the pace of the pictures, which line the sound has reached, and the time shown.

#include "core/app_state.h"
#include "tasks/find_sentence_logic.h"
#include "tasks/word_marking.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

namespace vt {

// The play list's fixed items: nothing chosen, the whole play, line by line; the lines follow.
inline constexpr int kPlayNothing = 0;
inline constexpr int kPlayWhole = 1;
inline constexpr int kPlayLineByLine = 2;
inline constexpr int kPlayFirstLine = 3; // the item of line 1; line i is item i + 2

// The text as the form shows it: the title on a line of its own, then "i) " and line i, one line
// each.
QString BuildPlayText(const QString& title, const Array1<QString>& lines, int lineCount);

// The items of the play list: "- Select 请选择 -", " Step 1 ", " Step 2 ", then "i. " and each
// line, cut to its first eight characters and "......" when it has nine or more.
QStringList PlayListItems(const Array1<QString>& lines, int lineCount);

// Where line first stands in text, as it is (not trimmed); nothing when it is not there.
std::optional<TextMark> PlayLineMark(const QString& text, const QString& line);

// The time between two pictures, so that they spread evenly over the play and one second more:
// (length + 1000) / count, to the nearest millisecond (halves to even). 0 without pictures.
int PictureInterval(int64_t playLength, int pictureCount);

// The picture after index: the next one, or the first after the last.
int NextPicture(int index, int pictureCount);

// The line the sound has reached at position: the last line whose start lies below it (from 1);
// 0 before the first line's start.
int LineAtPosition(const std::vector<LinePosition>& lines, int64_t position);

// "position / length" in seconds with one decimal, as the time label shows it.
QString PlayTimeText(int64_t positionMs, int64_t lengthMs);

// Which of "<<" and ">>" may be used at an index of the play list with this last index.
struct PlayListButtons {
    bool previous = false;
    bool next = false;
    bool operator==(const PlayListButtons&) const = default;
};
PlayListButtons PlayListButtonsAt(int index, int lastIndex);

} // namespace vt
