#pragma once
// The rules of the question task, without a widget: how a lesson's question file reads into
// questions with their options, and when a set of ticked boxes answers a question rightly.
//
// The file is a list of lines. A numeric line opens a question (its value is not used: questions
// are numbered by their order), the first line after it is the question's text, and each further
// line is an option; an option written with a leading "#" is a right one, and the mark is cut
// off. Empty lines are skipped wherever they stand.

#include "platform/helpers.h"

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <vector>

namespace vt {

// The options a question shows; any beyond them are never shown and never judged.
inline constexpr int kOptionBoxes = 4;

struct QuestionEntry {
    int16_t AnswerCount = 0;
    Array1<int16_t> Right; // per option: 1 right, 0 wrong
    QStringList Texts;     // index 0 the question's text, index i option i
};

struct QuestionFile {
    Array1<QuestionEntry> Questions;
    // The questions (1-based) with fewer than two options, in file order. The last question of
    // the file is never among them, whatever it has.
    std::vector<int16_t> TooFewAnswers;
};

// Reads the decoded lines of a question file. Lines before the first numeric line belong to no
// question and are passed over.
QuestionFile ReadQuestions(const Array1<QString>& lines);

// The warning for question q with fewer than two options.
QString TooFewAnswersMessage(int question);

// True when exactly the right options are ticked among the first AnswerCount boxes (at most
// four); an unticked box of a right option or a ticked box of a wrong one makes it wrong.
bool AnswerIsRight(const QuestionEntry& question, const std::array<bool, kOptionBoxes>& ticked);

// The box that closes the lesson, in the open lesson's number.
QString LessonFinishedMessage(int lesson);

} // namespace vt
