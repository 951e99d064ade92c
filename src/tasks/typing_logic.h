#pragma once
// The rules of the typing task, without a widget: which characters of the open lesson are new,
// the drill made of them with the syllable each one is said with, the score of a pass, and the
// small input method that lists the characters of the character table fitting the letters typed,
// nine to a page.
//
// The input method walks the whole character table on every letter, as the learner expects the
// list to hold every character that fits. It walks a compact copy of the table's readings made
// once, so that a keystroke stays far below a millisecond on a full-size course; what it finds is
// exactly what a walk over the table's texts finds. It does not keep the table: the table is
// read-only once loaded and must outlive the input method.

#include "core/app_state.h"

#include <QString>
#include <cstdint>
#include <vector>

namespace vt {

// The texts of the prompt line.
inline const QString kFirstPrompt =
    QStringLiteral("Input the pin yin of the Chinese Charater in the small box on the left.");
inline const QString kTypePrompt =
    QStringLiteral("Input the Pinyin of the Chinese Charater in the small box on the left.");
inline const QString kNoSuchPinyin = QStringLiteral("Such a Pinyin doesn't exist.");
inline const QString kPressSpace =
    QStringLiteral("Press space bar to select the first Chinese character.");
inline const QString kPressNumber =
    QStringLiteral("Press number key to select the correct Chinese character.");
inline const QString kPressPageOrNumber =
    QStringLiteral("Press +(=)/- or number key to select the correct Chinese character.");
inline const QString kRightVerdict = QStringLiteral("Correct! Press any key to go to next word.");
inline const QString kWrongVerdict = QStringLiteral("Wrong!");
inline const QString kFocusLost = QStringLiteral("This window has lost focus! Please click on it.");

// One character of the drill and the syllable it is said with: numeric-tone, dotted as the word
// files write it ("zh.ong1"), empty when no word of the lesson gives it one.
struct TargetChar {
    QString Character;
    QString Pinyin;
};

// The characters of the open lesson's words (LessonWords), each once, in the order they first
// appear, less those that a word of an earlier lesson already holds. Punctuation in the words
// does not count.
QString NewCharactersOfLesson(const AppState& app);

// Syllable number place (from 1) of a word's Pinyin, trimmed: each digit closes a syllable. The
// walk stops once it is past the word's length in characters, so a Pinyin with more syllables
// than characters gives nothing beyond the last character. Empty when there is no such syllable.
QString SyllableOfWord(const QString& pinyin, int place, int wordLength);

// The drill: the new characters, each with its syllable in the first word of the lesson that
// holds it.
Array1<TargetChar> BuildDrill(const AppState& app);

// The syllable recording that says a target ("zh.ong1" gives "zhong1"; a neutral tone is said
// with the first), empty for a target without a syllable.
QString TargetSoundSyllable(const QString& pinyin);

// The share of right answers in whole percent: the fraction rounded to two places, halves to
// the even neighbour, as a percentage. 0 when nothing was answered.
int16_t RateOf(int correct, int wrong);

// Where the drill stands: the character shown and the answers of the pass.
struct DrillProgress {
    int16_t TargetCount = 0;
    int16_t TargetIndex = 0;  // the character shown, 1..TargetCount
    int16_t PassProgress = 0; // characters of this pass shown so far, the present one included
    int16_t CorrectCount = 0;
    int16_t WrongCount = 0;
    int16_t CorrectnessRate = 0;

    // Moves on to the next character, from the last back to the first. True when that goes past
    // the end of the pass (PassProgress above TargetCount), which is when a pass is judged.
    bool Next();
    // A new pass, at the character now shown.
    void StartNewPass();
    // One answer of the pass, and the rate that follows.
    void Record(bool right);

    // "Correct: 3 , Wrong: 1 , Correctness Rate: 75 %"
    QString ScoreLine() const;
    // "4 / 12"
    QString ProgressLine() const;
};

// A character of the list: an entry of the character table and the reading of it that fits,
// both counted from 1.
struct Candidate {
    int Entry = 0;
    int Reading = 0;
};

// The input method: up to five letters typed, the characters that fit, nine to a page.
class InputMethod {
public:
    static constexpr int kMaxLetters = 5;
    static constexpr int kPageSize = 9;

    explicit InputMethod(const Array1<CharEntry>& table);

    const QString& TypedPinyin() const { return typed_; }
    // Adds a letter a..z. False when five are typed already (or it is no such letter): nothing
    // changes then.
    bool TypeLetter(QChar letter);
    // Takes back the last letter. False when nothing is typed.
    bool Backspace();
    // Forgets the letters and the list.
    void Clear();

    // Lists the characters for the letters typed, at page 1: first every entry with a reading
    // spelt exactly so, then every entry with a reading that begins so and is longer, each group
    // in table order and each entry with the first reading of its kind. An entry can stand in
    // both groups.
    void Search();

    int CandidateCount() const { return static_cast<int>(candidates_.size()); }
    int CandidatePage() const { return page_; }
    int CandidatePages() const { return (CandidateCount() + kPageSize - 1) / kPageSize; }
    // Item index of the list, from 1.
    const Candidate& CandidateAt(int index) const { return candidates_[size_t(index - 1)]; }
    const CharEntry& EntryOf(const Candidate& c) const { return table_[c.Entry]; }
    const CharReading& ReadingOf(const Candidate& c) const {
        return table_[c.Entry].Readings[c.Reading];
    }

    // Paging; false on the last (first) page or with no list, when nothing changes.
    bool NextPage();
    bool PreviousPage();

    // Item k (1..9) of the page shown, or null when the page has no such item.
    const Candidate* PageItem(int k) const;

    // The page as the learner sees it, " 1 中  2 钟 ", and " +/-" behind it when the list has
    // more than one page. Empty with no list.
    QString PageLine() const;
    // What to do next: pick the first with the space bar when it is the target, else pick by
    // number (and page when there are pages). With no list: the letters fit nothing.
    QString Prompt(const QString& target) const;

private:
    const Array1<CharEntry>& table_;
    // One key per reading of the table, entry after entry: the reading's letters packed one to a
    // byte, or kOddKey for a spelling the packing cannot hold (searched through its text).
    std::vector<uint64_t> keys_;
    std::vector<int> entryStart_; // entry e's keys are [entryStart_[e - 1], entryStart_[e])

    QString typed_;
    std::vector<Candidate> candidates_;
    std::vector<Candidate> longer_; // kept between searches so a keystroke allocates nothing
    int page_ = 0;
};

} // namespace vt
