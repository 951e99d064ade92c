#pragma once
// How the blank-filling task lays out a lesson's text before it cuts blanks into it, and where a
// cut may land. The task and the course compiler both use these rules: the task to cut, the
// compiler to refuse a text in which the cutting could never place its next blank.
//
// The laid-out text centres the title in kBlankTitleWidth places with two blanks for each place
// it leaves free. A read text then runs its lines on, a line beginning with two blanks starting
// a new paragraph after a line break; a TV play puts its title and each of its lines on a line
// of its own. Line breaks are two characters, carriage return and line feed, so that every
// distance between two cuts is counted the same way whatever box shows the text later.
//
// Places count from 1, as the cutting counts them; place 0 stands before the first character.

#include <QString>
#include <QStringList>
#include <vector>

namespace vt {

// The widest title the task centres.
inline constexpr int kBlankTitleWidth = 28;
// The next cut lands this many places after the last one, at the nearest and the farthest.
inline constexpr int kNearestCut = 2;
inline constexpr int kFarthestCut = 21;
// The line break of the laid-out text.
inline const QString kBlankLineBreak = QStringLiteral("\r\n");

// Where cutting starts for a text with this title: (28 - its length) x 2. Negative for a title
// wider than 28 places, which the course does not offer.
int BlankLead(const QString& title);

struct BlankText {
    QString text;
    // For each character of text, the line it came from: 0 for the centring blanks; for a read
    // text the index into its lines (so its title line is 0 too); for a play 0 for its title,
    // and i + 1 for its lines[i], together with the line break before it.
    std::vector<int> line;
};

// The text as the task lays it out. lines: a read text's lines, its title line first, or a
// play's shown lines ("王明：你好！"); title: the title the task centres (a read text's first
// line, a play's title).
BlankText LayOutBlankText(const QStringList& lines, const QString& title, bool play);

// True for a character the task may cut: one that counts as Chinese.
bool IsCuttable(QChar c);

// True when, after a cut at place last, every place the next cut may land on lies inside the
// text and none holds a character that may be cut: the cutting would draw for ever.
bool CuttingStallsAfter(const QString& text, int last);

} // namespace vt
