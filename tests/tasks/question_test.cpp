// The question task on the virtual clock: reading the file, judging the ticked boxes, the rounds
// at the study position and the silent end away from it, and the missing file.

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "platform/media_control.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/question.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

using test::TestEnv;

struct QuestionTest : ::testing::Test {
    TestEnv env;
    Question* form = nullptr;

    // Opens task 7 of lesson 3 (or the one given) on these lines, at the study position unless
    // told otherwise; without lines there is no question file.
    void open(const QStringList& lines, int lesson = 3, bool atStudyPosition = true) {
        env.WriteFile("Sound/right.WAV", test::ToneWav(880, 100));
        env.WriteFile("Sound/wrong.WAV", test::ToneWav(220, 100));
        if (!lines.isEmpty())
            env.WriteFile(LessonQuestionsFile({}, lesson), EncodeScriptLines(lines, "RQ", 7));
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(lesson);
        app.OpenTask = 7;
        app.StudyLesson = static_cast<int16_t>(atStudyPosition ? lesson : lesson + 1);
        app.StudyTask = atStudyPosition ? 7 : 1;
        form = env.rt->forms.Load<Question>();
        form->Show();
    }
    // n questions, each with a right option A and a wrong option B.
    static QStringList simple(int n) {
        QStringList lines;
        for (int i = 1; i <= n; ++i)
            lines << QString::number(i) << QStringLiteral("Q%1").arg(i) << "#right"
                  << "wrong";
        return lines;
    }
    // Ticks (or unticks) the boxes in turn, then presses OK; with next, Next as well.
    void answer(std::initializer_list<int> boxes, bool next = false) {
        for (int i : boxes)
            form->Check2[static_cast<size_t>(i)]->click();
        form->Command2->click();
        if (next) form->Command2->click();
    }
    QString verdict() const { return form->Label3[2]->Caption(); }
};

TEST_F(QuestionTest, JudgesExactlyTheTickedBoxesAndHidesUnusedOnes) {
    open({"1", "两个对的？", "#甲", "乙", "#丙", "", "2", "空的？", "#是", "不是", "3", "?", "#a",
          "b"});
    EXPECT_EQ(form->Text1->Text(), "两个对的？");
    EXPECT_EQ(form->Text2[2]->Text(), "丙");
    EXPECT_FALSE(form->Check2[3]->isVisibleTo(form));
    EXPECT_TRUE(form->Text2[3]->Text().isEmpty());
    EXPECT_FALSE(form->Text2[3]->isVisibleTo(form));
    EXPECT_FALSE(form->Command2->isEnabled()) << "nothing ticked, nothing to judge";

    answer({0}); // one of two right options
    EXPECT_EQ(verdict(), "Wrong  不对");
    EXPECT_TRUE(env.rt->sound->MMControl1->FileName().endsWith("wrong.WAV"));
    EXPECT_FALSE(form->Check2[0]->isEnabled());
    EXPECT_EQ(form->Command2->Caption(), "Next");
    form->Command2->click();
    EXPECT_EQ(form->Label1->Caption(), "Question 2");
    EXPECT_EQ(form->Command2->Caption(), "OK");
    EXPECT_FALSE(form->Command2->isEnabled());
    EXPECT_TRUE(verdict().isEmpty());

    answer({0, 0}); // ticked and unticked: the empty answer is judged
    EXPECT_EQ(verdict(), "Wrong  不对");
    EXPECT_EQ(form->Label3[1]->Caption(), "2");
}

TEST_F(QuestionTest, ARoundWithoutARightAnswerStartsOverAndOneRightAnswerFinishesTheLesson) {
    open(simple(10));
    for (int q = 1; q <= 10; ++q)
        answer({1}, q < 10);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text,
              "You haven't correctly answer all the questions. Do task 7 again, please");
    EXPECT_EQ(form->Text1->Text(), "Q1");
    EXPECT_EQ(form->Label3[1]->Caption(), "0");
    EXPECT_EQ(form->Label1->Caption(), "Question 10") << "the number waits for the next Next";
    EXPECT_TRUE(form->Command2->isEnabled());

    for (int q = 1; q <= 10; ++q) {
        answer({q == 6 ? 0 : 1}, q < 10);
        if (q == 6) {
            EXPECT_EQ(form->Label3[0]->Caption(), "1");
        }
    }
    EXPECT_EQ(env.rt->app.StudyLesson, 4);
    EXPECT_EQ(env.rt->app.StudyTask, 1);
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.boxes.Last().text, LessonFinishedMessage(3));
    EXPECT_TRUE(env.boxes.Last().text.contains(".\nAs long as you keep doing one lesson per day"));
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr) << "OK closes the form without a word";
}

TEST_F(QuestionTest, ReadsOptionsPastStrayAndEmptyLinesAndEndsSilentlyAwayFromThePosition) {
    open({"stray", "1", "", "Short?", "#only", "2", "Five?", "a", "#b", "c", "d", "#e", "3",
          "Last?", "#yes"},
         3, false);
    ASSERT_EQ(env.boxes.Count(), 1) << "the last question's single option is not warned of";
    EXPECT_EQ(env.boxes.Last().text, "Error: Question 1 has no enough answers.");
    answer({0}, true);
    EXPECT_EQ(form->Text2[3]->Text(), "d");
    answer({1}, true); // the fifth option is never judged
    EXPECT_EQ(form->Label3[0]->Caption(), "2");
    answer({0});
    EXPECT_EQ(env.boxes.Count(), 1);
    EXPECT_FALSE(form->Command2->isEnabled());
    form->Command1->click();
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr) << "nothing to warn of when leaving";
}

TEST_F(QuestionTest, FinishingTheLastLessonIsCongratulatedFirstAndCancelStays) {
    open(simple(1), kLessonCount);
    env.boxes.Answer(Mb::OK);
    env.boxes.Answer(Mb::Cancel);
    answer({0});
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_TRUE(env.boxes.Boxes()[0].text.startsWith("Congratulations!"));
    EXPECT_EQ(env.boxes.Last().text, LessonFinishedMessage(kLessonCount));
    ASSERT_EQ(env.rt->forms.Get<Question>(), form);
    EXPECT_FALSE(form->Command2->isEnabled());
    test::PressKey(form, Qt::Key_Escape);
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr);
    EXPECT_EQ(env.boxes.Count(), 2);
}

TEST_F(QuestionTest, AMissingFileIsNamedASecondLaterAndLeavingAsksFirst) {
    open({});
    EXPECT_FALSE(form->Check2[0]->isEnabled());
    env.clock.Advance(999);
    EXPECT_EQ(env.boxes.Count(), 0);
    env.clock.Advance(5000);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "Fail to find question file.");
    env.boxes.Answer(Mb::OK);
    test::PressKey(form, Qt::Key_Escape);
    EXPECT_EQ(env.rt->forms.Get<Question>(), form) << "OK stays";
    env.boxes.Answer(Mb::Cancel);
    form->Command1->click();
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr);
}

} // namespace
} // namespace vt
