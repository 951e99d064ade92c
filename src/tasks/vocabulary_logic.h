#pragma once
// The rules of the timed vocabulary drill, without any widget: the order the lesson's words are
// asked in, a word's meanings, the option lines they are put on, and the wrong meanings that fill
// the other lines.

#include "core/app_state.h"
#include "platform/helpers.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace vt {

class Random;

// The option lines have indices 0 to kLastOption; the line with index 0 (numbered 1 on the
// screen) never shows a right meaning.
inline constexpr int kLastOption = 7;
inline constexpr int kVocabularyPass = 80;
// Ticks of the time bar before a word is lost.
inline constexpr int kBarTicks = 20;
// An option line is never wider than this, in twips.
inline constexpr int kOptionWidthCap = 6540;
// How long the answer stays on screen for each of the word's meanings.
inline constexpr int kAnswerMsPerMeaning = 2000;

// The lesson's words in a random order, each once, drawn without replacement; the Pinyin is
// stripped of punctuation so that it can be spoken.
Array1<LessonWord> ShuffleWords(const Array1<LessonWord>& words, int count, Random& random);

// A word's English cut at every ";" into its meanings, each trimmed on both sides. A text without
// ";" is one meaning.
QStringList SplitMeanings(const QString& english);

// The option line for each of count meanings: distinct values from 1 to lastOption. More meanings
// than lines cannot all be placed: only the first lastOption get a line.
std::vector<int> DrawAnswerLines(int count, int lastOption, Random& random);

// A wrong meaning for an option line: one meaning of another row of the drill than current.
// With a drill of one word there is no other row, and the line stays blank.
QString DrawWrongMeaning(const Array1<LessonWord>& drill, int current, Random& random);

// An option line's caption: one blank, the meaning with trailing blanks cut, one blank.
QString OptionCaption(const QString& meaning);

} // namespace vt
