#pragma once
// What the lesson tasks need of a lesson's material, as plain rules on its text: the random
// draws of the tasks only end when the material offers what they draw. The course reader uses
// these to refuse sources the program could not teach from.
//
// - The vocabulary drill draws a wrong meaning from another word, and a line for every meaning
//   among seven: a lesson needs two words, and a word at most seven meanings.
// - Finding the sentence to a sound swaps two different characters of every line of four or
//   more Chinese characters: such a line needs two different characters that may be swapped.
// - Blank filling cuts a character every 2 to 21 characters of its laid-out text, and draws
//   again while it lands on anything but a Chinese character: after any character it may cut,
//   one of the 2nd to 21st characters on must be Chinese, unless the text ends first. The
//   layout and the rule of the cuts are the task's own (core/blank_layout.h).

#include "core/sentence_swap.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace vt::coursepack {

// The meanings of a word's English as the vocabulary drill cuts it: at every ";".
int MeaningCount(const QString& english);

// Whether the sound-to-sentence task asks a text line, and whether it can alter it, are the
// program's own rules (LineIsAsked, LineCanBeSwapped).
using vt::LineCanBeSwapped;
using vt::LineIsAsked;

// Where blank filling could never place its next blank, for a text as the program holds it: a
// read text's lines (line 1 its title, a new paragraph beginning with two blanks), or a play's
// title and its shown lines. The answer is the index of the line on which the endless stretch
// begins (0 for a play's title, then 1 for its first line; for a read text the index into its
// lines), or nothing when every blank can be placed. A title wider than kBlankTitleWidth
// (core/blank_layout.h) is not laid out at all; the caller refuses it first.
std::optional<int> BlankCuttingStalls(const QStringList& lines, bool play,
                                      const QString& playTitle = QString());

} // namespace vt::coursepack
