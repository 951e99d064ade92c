#pragma once
// The rules of the blank-filling task, without a widget: cutting numbered blanks into the
// lesson's text, the four characters offered for a blank, and judging the answers. The form
// Exercise3 shows what these decide; Result1 lists the verdicts.
//
// Random draws go through the program's generator, so a test that seeds it gets the same blanks
// and the same candidates every time.

#include "core/app_state.h"
#include "core/blank_layout.h"

#include <QString>
#include <array>
#include <vector>

namespace vt {

class Random;

// The text with its blanks cut.
struct BlankCut {
    // The laid-out text with each cut character replaced by "(n)__", line breaks "\r\n".
    QString text;
    Array1<Blank> blanks;
    // For each blank, the place (from 1) of its character in the laid-out text.
    std::vector<int> cutPlaces;
    // For each blank, where its "(" stands in the text as a text box shows it (from 0, a line
    // break counted as one character).
    std::vector<int> shownPlaces;
    // The text as a text box shows it: line breaks "\n".
    QString Shown() const;
};

// Cuts blanks into a laid-out text. Cutting starts at lead (BlankLead of the title; below 0
// counts as 0). Each next cut lands 2 to 21 places after the last, drawn again while it falls on
// a character that may not be cut, and the cutting ends when a draw lands past the end. Where
// no place within reach holds a character to cut (a run of 20 and more others), the cutting ends
// there too rather than drawing for ever; the rest of the text stays whole.
BlankCut CutBlanks(const QString& laidOut, int lead, Random& random);

// The same for the open lesson in the program-wide record: its text lines and title, laid out
// as a read text or a play.
BlankCut CutLessonBlanks(const AppState& app, Random& random);

// The characters offered while there are at most this many blanks never change.
inline constexpr int kCandidateCount = 4;

// With at most four blanks: the characters of all blanks in a random order, drawn without
// putting back, one for each blank.
std::vector<QString> FixedCandidates(const Array1<Blank>& blanks, Random& random);

// With five blanks or more, the four offered for blank current (from 1): the characters of
// blanks 1 to 4 in a random order, and when none of them is the current blank's own, one of
// them drawn at random gives way to it. Only the first four blanks ever take part, and a
// character that two of them share is offered twice.
std::array<QString, kCandidateCount> CandidatesFor(const Array1<Blank>& blanks, int current,
                                                   Random& random);

struct BlankScore {
    int right = 0;
    int wrong = 0;
    int empty = 0;
    int Total() const { return right + wrong + empty; }
};

// Counts every blank: unfilled, filled rightly, filled wrongly.
BlankScore ScoreBlanks(const Array1<Blank>& blanks);

// The correctness rate in whole percent: right out of all blanks, to two places with halves
// going to the even digit, times 100 (1 of 8 is 12, 3 of 8 is 38). Empty blanks count against
// it. A text that gave no blank has a rate of 0.
int CorrectnessRate(const BlankScore& score);

// The task is passed at this rate.
inline constexpr int kPassingRate = 80;

// The verdict a blank gets in the list of results.
QString BlankVerdict(const Blank& blank);

// The caption of a blank in the list of blanks: its number, and " - " and the character once
// filled.
QString BlankItem(int number, const QString& answer);

} // namespace vt
