#pragma once
// The knowledge base: every lesson's words and text lines and the additional vocabulary, read
// into the tables of AppState once at start, and the character table built from the words.
// The three stages run in order in one tick of the loading form; they report through
// LoadProgress, which the form binds to its three bars, so they run just as well without widgets.
//
// After the load the tables are read-only. Nothing here writes files or keeps files open.

#include "core/app_state.h"
#include "core/course_shape.h"

#include <QString>
#include <QStringView>
#include <functional>
#include <vector>

namespace vt {

struct Runtime;

// Numbers of the loading form's bars, as the form names them (ProgressBar2..ProgressBar4).
enum LoadBar : int {
    VocabularyBar = 2, // word files found (icwp and ci<n>), of 160
    SentenceBar = 3,   // text files found (lifr), of 140
    CharacterBar = 4,  // words handled while the character table is built, of WordCount
};

// The maxima and values of the three bars. Changed (when set) is called after every change with
// the bar's number, so a form can copy Max and Value onto its widgets.
struct LoadProgress {
    int Max[5] = {0, 0, 100, 100, 100};
    int Value[5] = {};
    std::function<void(int bar)> Changed;

    void SetMax(int bar, int max);
    void SetValue(int bar, int value);
    void Step(int bar) { SetValue(bar, Value[bar] + 1); }
};

// The greeting spoken when the load is done.
inline const QString kGreeting = QStringLiteral("huan1 ying2 shi3 yong4 wan4 tu2 ri4 ya3");

// Stage 1: sizes TitleList to 140 and fills it from Lessons\Title.zvk; sets the maxima of the
// vocabulary and sentence bars. A missing title file is reported and the load goes on.
void LoadTitles(Runtime& rt, LoadProgress& progress);

// Stage 2: the words of every lesson's icwp.zvk, then of Vocabulary\ci<n>.zvk, into WordTable,
// WordPinyin and WordOrigin; then the lines of every lesson's lifr.zvk into SentenceTable.
// Missing files are passed over without a word; an unreadable file is reported by the reader
// and counts as found.
void LoadWordsAndSentences(Runtime& rt, LoadProgress& progress);

// Stage 3: CharTable from the words, each character and each of its readings in order of first
// appearance. A word whose characters and syllables do not pair one to one adds nothing. The
// look-up goes through an index, so the cost grows with the number of characters met, not with
// words times distinct characters.
void BuildCharTable(Runtime& rt, LoadProgress& progress);

// All three stages in their order.
void LoadKnowledgeBase(Runtime& rt, LoadProgress& progress);

// The first row of CharTable that holds this character, or 0 when none does (or the text is not
// one character).
int16_t CharRowOf(const AppState& app, const QString& character);
// The same for many characters at once, in one pass over the table.
std::vector<int16_t> CharRowsOf(const AppState& app, const std::vector<QString>& characters);

// The recording of a character's reading: Phonetic Symbols\<Initial in upper case>\ and the
// syllable in its sound file's tone ("zhong1", a neutral one as "ma1"); see data_paths.h.
QString ReadingSoundFile(const QString& root, const CharReading& reading);

// One syllable of a word's Pinyin: its letters (trimmed, dot in place) and its tone digit, which
// is empty when the Pinyin has no digit at all. Views into the Pinyin text.
struct WordSyllable {
    QStringView Letters;
    QStringView ToneDigit;
};

// Cuts dotted Pinyin at its digits into out: "zh.ong1 g.uo2" gives ("zh.ong","1"),
// ("g.uo","2"). Text after the last digit is dropped; Pinyin without any digit gives one
// syllable of all its letters with no tone. The caller keeps out, so a long run of words
// allocates nothing.
void CutWordSyllables(QStringView pinyin, std::vector<WordSyllable>& out);

// A reading of a character made from one syllable, with its tone fields filled.
CharReading MakeReading(const WordSyllable& syllable);

} // namespace vt
