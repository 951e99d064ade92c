#pragma once
// The rules of the read-text task without a widget: the text as the form shows it, the sentence
// list, the judgement of a translation, and the walk that cuts the running text into words for
// reading aloud.
//
// The walk looks for the longest word at each Chinese character, first among the lesson's new
// words and then in the whole word table. Both tables are indexed once (by the first character
// of each candidate, in table order), so a step costs the candidates of one character, not a
// pass over every row.

#include "core/app_state.h"
#include "tasks/word_marking.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace vt {

// The text of a lesson as one string: the title centred by leading blanks, then lines 2 on. A
// line that begins with two blanks closes its paragraph ("\n" behind it); other lines run on.
QString BuildLessonText(const QString& title, const Array1<QString>& lines, int lineCount);

// The items of the sentence list: "- Select 请选择 -", then "i. " and the first five characters
// of each line without its leading blanks, and "...".
QStringList SentenceListItems(const Array1<QString>& lines, int lineCount);

// Where sentence line first stands in text (trimmed); nothing when it is not there.
std::optional<TextMark> SentenceMark(const QString& text, const QString& line);

// The judgement of a translation on leaving task 1.
enum class TranslationVerdict {
    NothingToJudge, // the lesson text is blank: leave freely
    TooShort,       // under half the length of the text
    Fails,          // too few of the lesson's English words
    Passes,
};
// The tokens of the English cells (parenthesised notes dropped) found in translation, ignoring
// case, against the number of word rows. The ratio is rounded half to even before the
// comparison, so 0.5 fails and 1.5 passes. A lesson without word rows has nothing to count
// against: a translation long enough passes. A blank lesson text has nothing to judge unless
// blankTextLeavesFreely is off, and then it is judged like any other.
TranslationVerdict JudgeTranslation(const QString& lessonText, const QString& translation,
                                    const Array1<LessonWord>& words, int wordRows,
                                    bool blankTextLeavesFreely = true);
// The number of English tokens of the lesson's words that occur in translation.
int EnglishTokensFound(const Array1<LessonWord>& words, int wordRows, const QString& translation);

// Whether c counts as Chinese for the walk (above 255 and not Chinese punctuation).
bool IsChineseCharacter(QChar c);

// The candidates of a table, grouped by first character in table order: a Chinese cell without
// its notes, cut at blanks once its dots are blanks, each piece a candidate with its row.
class CandidateIndex {
public:
    struct Candidate {
        QString word;
        int row = 0;
    };
    void Add(const QString& chineseCell, int row);
    const std::vector<Candidate>& For(QChar c) const;
    bool Empty() const { return byFirst_.isEmpty(); }

private:
    QHash<char16_t, std::vector<Candidate>> byFirst_;
};

// Where a word found by the walk comes from.
struct WalkWord {
    QString word;
    int row = 0;
    bool fromLesson = false;  // the row is of the lesson's words, else of the word table
    bool withRelated = false; // related expressions are listed with it
};

// The walk's view of the tables: the lesson's words, the word table, and for each character the
// first row of the word table that holds it.
class WordWalk {
public:
    void SetLesson(const Array1<LessonWord>& words, int wordRows);
    void SetWordTable(const Array1<WordRow>& table, int wordCount);

    // The word at position pos (0-based) of text, which must be a Chinese character; nothing
    // when no table knows the character, so the walk passes over it.
    std::optional<WalkWord> WordAt(const QString& text, int pos) const;

private:
    CandidateIndex lesson_;
    CandidateIndex table_;
    QHash<char16_t, int> firstRowHolding_;
};

// The syllables of word inside the Pinyin of its entry: the entry's Chinese cell without its
// separators gives the place of the word, and of the numeric-tone Pinyin (dots dropped) only the
// syllables of the word's own characters are kept, as written.
QString KeptSyllables(const QString& chineseCell, const QString& pinyin, const QString& word);

} // namespace vt
