#include "tasks/question_logic.h"

#include <algorithm>

namespace vt {

QuestionFile ReadQuestions(const Array1<QString>& lines) {
    QuestionFile file;
    Array1<QuestionEntry>& questions = file.Questions;
    int16_t answers = 0;
    bool awaitingText = false;
    for (int i = 1; i <= lines.Count(); ++i) {
        const QString& line = lines[i];
        if (Trim(line).isEmpty()) continue;
        if (IsNumeric(line)) {
            if (!questions.Empty()) {
                questions[questions.Count()].AnswerCount = answers;
                if (answers < 2)
                    file.TooFewAnswers.push_back(static_cast<int16_t>(questions.Count()));
            }
            // A question stands from its numeric line on, so that one without a text line still
            // has its place and its number.
            QuestionEntry entry;
            entry.Texts.append(QString());
            questions.Append(std::move(entry));
            answers = 0;
            awaitingText = true;
            continue;
        }
        if (questions.Empty()) continue;
        QuestionEntry& q = questions[questions.Count()];
        if (awaitingText) {
            q.Texts[0] = line;
            awaitingText = false;
            continue;
        }
        ++answers;
        const bool right = line.startsWith(u'#');
        q.Right.Append(right ? 1 : 0);
        q.Texts.append(right ? line.mid(1) : line);
    }
    if (!questions.Empty()) questions[questions.Count()].AnswerCount = answers;
    return file;
}

QString TooFewAnswersMessage(int question) {
    return QStringLiteral("Error: Question %1 has no enough answers.").arg(question);
}

bool AnswerIsRight(const QuestionEntry& question, const std::array<bool, kOptionBoxes>& ticked) {
    const int judged = std::min<int>({question.AnswerCount, kOptionBoxes, question.Right.Count()});
    for (int i = 0; i < judged; ++i)
        if (ticked[static_cast<size_t>(i)] != (question.Right[i + 1] == 1)) return false;
    return true;
}

QString LessonFinishedMessage(int lesson) {
    return QStringLiteral("Great! You have finished studying lesson %1. Let's do the next lesson "
                          "tomorrow.\nAs long as you keep doing one lesson per day, your Chinese "
                          "will make a great progress soon!")
        .arg(lesson);
}

} // namespace vt
