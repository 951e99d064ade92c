#pragma once
// The open lesson's words and text, read from its two script files into the fields of AppState
// that every task reads: LessonWords and LessonWordRows, TextLines and TextLineCount, TextTitle.

namespace vt {

struct Runtime;

// Fills the words and the text of OpenLesson from its word file (icwp, groups of three lines:
// Pinyin, Chinese, English, each trimmed) and its text file (lifr). A read text's title is its
// first text line; a TV play has its title on the second line of the file and its lines from the
// third. Empty text lines are left out. A text file that cannot be read leaves no text lines; a
// word file that gives no lines leaves the row count as it was, over empty rows.
void LoadLessonScripts(Runtime& rt);

} // namespace vt
