// Reading a question file and judging the ticked boxes.

#include "tasks/question_logic.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

Array1<QString> Lines(const QStringList& list) {
    Array1<QString> lines;
    for (const QString& l : list)
        lines.Append(l);
    return lines;
}

TEST(QuestionLogic, ReadsQuestionsOptionsAndMarksAndWarnsOfShortOnesButTheLast) {
    const QuestionFile file = ReadQuestions(Lines({"stray line before any question",
                                                   "1",
                                                   "",
                                                   "Who?",
                                                   "#Li",
                                                   "Wang",
                                                   "",
                                                   "2",
                                                   "Only one?",
                                                   "#yes",
                                                   "7",
                                                   "Where?",
                                                   "#here",
                                                   "#there",
                                                   "# spaced",
                                                   "far",
                                                   "nowhere",
                                                   "3",
                                                   "Last?",
                                                   "#one"}));
    ASSERT_EQ(file.Questions.Count(), 4) << "questions are numbered by order, not by value";
    const QuestionEntry& first = file.Questions[1];
    EXPECT_EQ(first.AnswerCount, 2);
    EXPECT_EQ(first.Texts, QStringList({"Who?", "Li", "Wang"}));
    EXPECT_EQ(first.Right[1], 1);
    EXPECT_EQ(first.Right[2], 0);
    const QuestionEntry& third = file.Questions[3];
    EXPECT_EQ(third.AnswerCount, 5) << "options past the fourth are kept, never shown";
    EXPECT_EQ(third.Texts[3], " spaced");
    EXPECT_EQ(file.TooFewAnswers, std::vector<int16_t>{2}) << "the last question is not checked";
    EXPECT_EQ(TooFewAnswersMessage(2), "Error: Question 2 has no enough answers.");

    EXPECT_TRUE(ReadQuestions(Lines({})).Questions.Empty());
}

TEST(QuestionLogic, OnlyExactlyTheRightBoxesAnswerRightly) {
    const QuestionEntry q =
        ReadQuestions(Lines({"1", "Which?", "#a", "b", "#c", "d", "#e"})).Questions[1];
    struct Case {
        std::array<bool, kOptionBoxes> ticked;
        bool right;
    } cases[] = {
        {{true, false, true, false}, true},   // the fifth option is never judged
        {{true, false, false, false}, false}, // one of two right ones
        {{true, true, true, false}, false},   // a wrong one beside them
        {{false, false, false, false}, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(AnswerIsRight(q, c.ticked), c.right);
}

} // namespace
} // namespace vt
