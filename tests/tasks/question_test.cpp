// The question task on the virtual clock: ticking and judging, the rounds at the study position,
// the silent end away from it, the missing file, and the last question of a lesson on the course.

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "platform/media_control.h"
#include "shell/begin1.h"
#include "shell/start_or_not.h"
#include "shell/study.h"
#include "shell/study_file.h"
#include "support/events.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/question.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

using test::TestEnv;

const QString kAgain =
    QStringLiteral("You haven't correctly answer all the questions. Do task 7 again, please");

struct QuestionTest : ::testing::Test {
    TestEnv env;
    Question* form = nullptr;

    // Lesson 3's question file, opened as task 7, at the study position unless told.
    void open(const QStringList& lines, int lesson = 3, bool atStudyPosition = true) {
        env.WriteFile("Sound/right.WAV", test::ToneWav(880, 100));
        env.WriteFile("Sound/wrong.WAV", test::ToneWav(220, 100));
        env.WriteFile(LessonQuestionsFile({}, lesson), EncodeScriptLines(lines, "RQ", 7));
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(lesson);
        app.OpenTask = 7;
        app.StudyLesson = static_cast<int16_t>(atStudyPosition ? lesson : lesson + 1);
        app.StudyTask = atStudyPosition ? 7 : 1;
        form = env.rt->forms.Load<Question>();
        form->Show();
    }
    // n questions of a right option A and a wrong option B.
    static QStringList simple(int n) {
        QStringList lines;
        for (int i = 1; i <= n; ++i)
            lines << QString::number(i) << QStringLiteral("Question text %1").arg(i) << "#right"
                  << "wrong";
        return lines;
    }
    void answer(std::initializer_list<int> boxes) {
        for (int i : boxes)
            form->Check2[static_cast<size_t>(i)]->click();
        form->Command2->click();
    }
    QString verdictSound() const { return env.rt->sound->MMControl1->FileName(); }
};

TEST_F(QuestionTest, JudgesExactlyTheTickedBoxesAndHidesUnusedOnes) {
    open({"1", "两个对的？", "#甲", "乙", "#丙", "", "2", "空的？", "#是", "不是", "3", "最后？",
          "#对", "错"});
    EXPECT_EQ(form->Label1->Caption(), "Question 1");
    EXPECT_EQ(form->Text1->Text(), "两个对的？");
    EXPECT_EQ(form->Text2[2]->Text(), "丙");
    EXPECT_FALSE(form->Check2[3]->isVisibleTo(form)) << "three options hide the fourth box";
    EXPECT_TRUE(form->Text2[3]->Text().isEmpty());
    EXPECT_FALSE(form->Text2[3]->isVisibleTo(form));
    EXPECT_FALSE(form->Command2->isEnabled()) << "nothing ticked, nothing to judge";

    answer({0}); // one of the two right options
    EXPECT_EQ(form->Label3[2]->Caption(), "Wrong  不对");
    EXPECT_EQ(form->Label3[1]->Caption(), "1");
    EXPECT_TRUE(verdictSound().endsWith("wrong.WAV"));
    EXPECT_FALSE(form->Check2[0]->isEnabled());
    EXPECT_EQ(form->Command2->Caption(), "Next");

    form->Command2->click();
    EXPECT_EQ(form->Label1->Caption(), "Question 2");
    EXPECT_EQ(form->Command2->Caption(), "OK");
    EXPECT_FALSE(form->Command2->isEnabled());
    EXPECT_TRUE(form->Check2[0]->isEnabled());
    EXPECT_FALSE(form->Check2[0]->isChecked());
    EXPECT_TRUE(form->Label3[2]->Caption().isEmpty());

    answer({0, 0}); // ticked and unticked: the empty answer is judged
    EXPECT_EQ(form->Label3[2]->Caption(), "Wrong  不对");
    EXPECT_EQ(form->Label3[1]->Caption(), "2");
}

TEST_F(QuestionTest, ARoundWithoutARightAnswerStartsOverAndOneRightAnswerFinishesTheLesson) {
    open(simple(10));
    for (int q = 1; q <= 10; ++q) {
        answer({1});
        if (q < 10) form->Command2->click();
    }
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kAgain);
    EXPECT_EQ(form->CurrentQuestion, 1);
    EXPECT_EQ(form->Text1->Text(), "Question text 1");
    EXPECT_EQ(form->Label3[1]->Caption(), "0");
    EXPECT_EQ(form->Label1->Caption(), "Question 10") << "the number waits for the next Next";
    EXPECT_TRUE(form->Command2->isEnabled()) << "OK is on from the start of the new round";
    EXPECT_EQ(env.rt->app.StudyTask, 7);

    for (int q = 1; q <= 10; ++q) {
        answer({q == 6 ? 0 : 1});
        if (q == 6) {
            EXPECT_EQ(form->Label3[2]->Caption(), "Right  正确");
            EXPECT_EQ(form->Label3[0]->Caption(), "1");
            EXPECT_TRUE(verdictSound().endsWith("right.WAV"));
        }
        if (q < 10) form->Command2->click();
    }
    EXPECT_EQ(env.rt->app.StudyLesson, 4);
    EXPECT_EQ(env.rt->app.StudyTask, 1);
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.boxes.Last().text,
              "Great! You have finished studying lesson 3. Let's do the next lesson tomorrow.\nAs "
              "long as you keep doing one lesson per day, your Chinese will make a great progress "
              "soon!");
    EXPECT_EQ(env.boxes.Last().flags, Mb::OKCancel | Mb::Information);
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr) << "OK closes the form without a word";
    EXPECT_EQ(env.boxes.Count(), 2);
}

TEST_F(QuestionTest, AwayFromTheStudyPositionTheLastAnswerEndsSilently) {
    open({"1", "Short?", "#only", "2", "Last?", "#yes", "no"}, 3, false);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "Error: Question 1 has no enough answers.");
    answer({0});
    form->Command2->click();
    answer({1});
    EXPECT_EQ(env.boxes.Count(), 1);
    EXPECT_FALSE(form->Command2->isEnabled());
    EXPECT_EQ(env.rt->app.StudyLesson, 4);
    form->Command1->click();
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr);
    EXPECT_EQ(env.boxes.Count(), 1) << "nothing to warn of away from the study position";
}

TEST_F(QuestionTest, FinishingTheLastLessonIsCongratulatedFirstAndCancelKeepsTheFormDone) {
    open(simple(1), kLessonCount);
    env.boxes.Answer(Mb::OK);
    env.boxes.Answer(Mb::Cancel);
    answer({0});
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_TRUE(env.boxes.Boxes()[0].text.startsWith("Congratulations!"));
    EXPECT_TRUE(env.boxes.Last().text.startsWith("Great! You have finished studying lesson 140."));
    EXPECT_EQ(env.rt->app.StudyLesson, kLessonCount + 1);
    ASSERT_EQ(env.rt->forms.Get<Question>(), form);
    EXPECT_FALSE(form->Command2->isEnabled());
    test::PressKey(form, Qt::Key_Escape);
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr);
    EXPECT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.rt->app.OpenTask, 0);
}

TEST_F(QuestionTest, AMissingFileIsNamedASecondLaterAndLeavingAsksFirst) {
    env.rt->app.OpenLesson = 5;
    env.rt->app.OpenTask = env.rt->app.StudyTask = 7;
    env.rt->app.StudyLesson = 5;
    form = env.rt->forms.Load<Question>();
    form->Show();
    EXPECT_FALSE(form->Check2[0]->isEnabled());
    EXPECT_FALSE(form->Command2->isEnabled());
    env.clock.Advance(999);
    EXPECT_EQ(env.boxes.Count(), 0);
    env.clock.Advance(1);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "Fail to find question file.");
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    env.clock.Advance(5000);
    EXPECT_EQ(env.boxes.Count(), 1) << "the warning comes once";

    env.boxes.Answer(Mb::OK);
    test::PressKey(form, Qt::Key_Escape);
    EXPECT_EQ(env.rt->forms.Get<Question>(), form) << "OK stays";
    EXPECT_TRUE(env.boxes.Last().text.startsWith("You haven't finished task 7 yet."));
    env.boxes.Answer(Mb::Cancel);
    form->Command1->click();
    EXPECT_EQ(env.rt->forms.Get<Question>(), nullptr);
}

// The whole way on the sample course: the lesson menu opens task 7 of lesson 1, the right boxes
// of every question are ticked, and lesson 2, task 1 is stored at once and open in the menu.
TEST(QuestionOnTheCourse, AnsweringLessonOneOpensLessonTwo) {
    TestEnv env;
    if (!env.CopyCourseScripts(QStringLiteral(VANTORIA_APP_DIR)))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    Runtime& rt = *env.rt;
    rt.app.StudyLesson = 1;
    rt.app.StudyTask = 7;
    ASSERT_TRUE(SaveStudyPosition(rt));
    rt.forms.Load<StartOrNot>();
    env.clock.Advance(100 + 200 + 200 + 200); // desktop, main screen, loading, menu
    Begin1* menu = rt.forms.Get<Begin1>();
    ASSERT_TRUE(menu);
    menu->Command1[6]->click();
    Question* form = rt.forms.Get<Question>();
    ASSERT_TRUE(form);
    ASSERT_GT(form->QuestionCount, 1);
    EXPECT_EQ(env.boxes.Count(), 0) << "the course's questions read without a warning";

    env.boxes.Answer(Mb::OK);
    for (int q = 1; q <= form->QuestionCount; ++q) {
        const QuestionEntry& entry = form->Questions[q];
        for (int i = 0; i < std::min<int>(entry.AnswerCount, kOptionBoxes); ++i)
            if (entry.Right[i + 1] == 1) form->Check2[static_cast<size_t>(i)]->click();
        form->Command2->click();
        if (q < form->QuestionCount) {
            EXPECT_EQ(form->Label3[2]->Caption(), "Right  正确") << "question " << q;
            form->Command2->click();
        }
    }
    EXPECT_EQ(rt.forms.Get<Question>(), nullptr);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(menu->Combo1->ListIndex(), 0) << "the lesson changes only through the list";
    EXPECT_EQ(menu->Label2[6]->ForeColor(), kTaskDone);
    menu->Combo1->SetListIndex(1);
    EXPECT_EQ(menu->Label2[0]->ForeColor(), kTaskCurrent);
    rt.app.StudyTask = 0;
    LoadStudyPosition(rt);
    EXPECT_EQ(rt.app.StudyLesson, 2);
    EXPECT_EQ(rt.app.StudyTask, 1);
}

} // namespace
} // namespace vt
