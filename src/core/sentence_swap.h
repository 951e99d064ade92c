#pragma once
// Which lines of a lesson text the sound-to-sentence task asks, and which of their characters it
// may swap to make the wrong versions. The task and the course compiler both hold to these rules:
// the compiler refuses a text line the task could not alter.

#include <QChar>
#include <QString>

namespace vt {

// A character the swap never picks: a digit, or one of the marks ，。；！.？、“”（）- and ：
// (the blank among them).
bool SwapPassesOver(QChar c);

// Whether the task asks this text line: four or more Chinese characters once trimmed of blanks.
bool LineIsAsked(const QString& line);

// Whether the trimmed line holds two different characters the swap may pick, so that an altered
// version can be made at all.
bool LineCanBeSwapped(const QString& line);

} // namespace vt
