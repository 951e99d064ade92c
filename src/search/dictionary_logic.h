#pragma once
// The dictionary's rules, without a widget: what kind of search a text asks for, which rows of
// the word table it hits, the entry shown for a row, the example sentences from the lessons, and
// the walk of Locate through an entry.
//
// A search is a straight scan over the word table in table order (lessons first), with no limit
// and no ranking. The texts every search compares against are prepared once, for the table as
// the load left it, so a keystroke costs one pass of plain substring tests.

#include "core/app_state.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace vt {

enum class SearchKind { Pinyin, English, Chinese };

// A last character that is a digit asks for Pinyin ("wo3", "3"); otherwise a first letter A-Z or
// a-z asks for English ("wo", "ni3 hao"); anything else is Chinese.
SearchKind KindOfSearch(const QString& text);

// The word table made ready for searching: each row's texts in lower case, with the blanks and
// marks the comparisons need. Built from the tables once; rebuilt when the word count changes.
class WordSearchIndex {
public:
    // Rebuilds when app's word table is not the one indexed.
    void Prepare(const AppState& app);

    // The rows (from 1) that the text hits, in table order. inLesson: a Chinese text must equal
    // the word itself.
    std::vector<int> Find(const AppState& app, const QString& text, bool inLesson);

private:
    int words_ = -1;
    int pinyinRows_ = -1;
    std::vector<QString> pinyin_;  // " " + StripPunctuation(pinyin) + " ", lower case
    std::vector<QString> meaning_; // the meaning as stored (blank at each end), lower case
    std::vector<QString> chinese_; // StripSentenceMarks(word), lower case
};

// The cells of a list row for word row `row`, numbered n: index, Chinese, English, Pinyin
// (empty past WordCountCopy), origin kind, origin number.
QStringList HitCells(const AppState& app, int row, int n);

// The pieces a word is looked for by in sentences: "." ends a piece, text in parentheses (ASCII
// or full width) is dropped, empty pieces are left out. "把.给" gives "把", "给".
QStringList WordPieces(const QString& word);

// True when the word holds an opening parenthesis, ASCII or full width.
bool HasParenthesis(const QString& word);

// The example sentences for a word whose row names `lesson` as its origin number: every sentence
// of that lesson that holds all pieces in order, then, when the word is one piece without a
// parenthesis and the search was not kept to the lesson, sentences of the other lessons until
// the running number reaches 20. Each sentence stands on a line of its own:
// "\n3）<sentence> [Lesson  第 12 课]". Empty when none matches.
QString ExampleSentences(const AppState& app, const QString& word, int lesson, bool inLessonOnly);

// What the entry of a row shows.
struct EntryParts {
    QString chinese; // column 1
    QString meaning; // column 2
    QString pinyin;  // column 3, as stored
    int originKind = 0;
    QString originNumber; // column 5
};

// The entry's text. feedsTask: a task is open whose answers the sentences would give away, so
// they are held back. examples: the row's computed sentences ("0" for none); not read when
// feedsTask. openTask 3 shows the word and its sentences without the meaning.
QString EntryText(const EntryParts& row, bool feedsTask, int openTask, const QString& examples);

// The file name of the syllable a single character's Pinyin is spoken with, and its tone: "hao3"
// gives "hao3" and "3"; "h.ao3" the same; "ma" gives "ma1" and "0".
struct CharSound {
    QString syllable;
    QString tone;
};
CharSound SoundOfSingleCharacter(const QString& pinyin);

// Locate: the next place (from 1) of needle in text, without regard to case, searched from
// `from` (1-based), and else again from `restart`; 0 when it is in neither.
int LocateNext(const QString& text, const QString& needle, int from, int restart);

} // namespace vt
