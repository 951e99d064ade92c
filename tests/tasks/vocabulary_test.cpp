// The timed vocabulary drill on the virtual clock with seeded random: the lines a word is put on,
// the verdicts and their waits, the time-out, the three ends of a pass and the way out.

#include "core/runtime.h"
#include "platform/media_control.h"
#include "shell/begin1.h"
#include "support/events.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/vocabulary.h"

#include <QSet>
#include <gtest/gtest.h>
#include <set>

namespace vt {
namespace {

using test::TestEnv;

struct VocabularyTest : ::testing::Test {
    TestEnv env;
    Vocabulary* form = nullptr;

    AppState& app() { return env.rt->app; }
    // The lesson's words as {Chinese, English, Pinyin}; task 3 of lesson 2 is open.
    void setWords(const std::vector<LessonWord>& words, bool atStudyPosition = true) {
        app().LessonWords.Erase();
        for (const LessonWord& w : words)
            app().LessonWords.Append(w);
        app().LessonWordRows = static_cast<int16_t>(words.size());
        app().OpenLesson = 2;
        app().OpenTask = 3;
        app().StudyLesson = atStudyPosition ? 2 : 5;
        app().StudyTask = 3;
        for (const char* name : {"right", "careful", "carryon"})
            env.WriteFile(QStringLiteral("Sound/%1.WAV").arg(name), test::ToneWav(440, 100));
    }
    void open() {
        form = env.rt->forms.Load<Vocabulary>();
        form->Show();
    }
    void start() { form->Command2->click(); }
    Label* line(int i) { return form->Label2[static_cast<size_t>(i)]; }
    bool isRight(int i) const {
        const auto& l = form->AnswerLines;
        return std::find(l.begin(), l.end(), i) != l.end();
    }
    void click(int i) { test::Click(line(i)); }
    void clickRight() { click(form->AnswerLines.back()); }
    void clickWrong() {
        for (int i = 0; i <= kLastOption; ++i)
            if (!isRight(i)) return click(i);
    }
    QString played() const { return env.rt->sound->MMControl1->FileName(); }
};

TEST_F(VocabularyTest, EachMeaningTakesALineFromTwoToEightAndOneClickSettlesTheWord) {
    setWords({{"你", "you", "ni3"},
              {"好", "good ; fine;well  ", "hao3"},
              {"是", "to be", "shi4."},
              {"们", "plural mark", "men"}},
             false);
    open();
    EXPECT_EQ(form->Label1->Caption(), "4 vocabulary");
    EXPECT_TRUE(app().VocabularyTaskOpen);
    for (int i = 1; i <= kLastOption; ++i)
        EXPECT_GT(TopTwips(line(i)), TopTwips(line(i - 1)) + HeightTwips(line(i - 1)));
    EXPECT_EQ(form->Label8[7]->Caption(), "8.  ");

    start();
    QSet<QString> seen;
    for (int n = 1; n <= 4; ++n) {
        const LessonWord& word = form->Drill[form->CurrentWord];
        seen << word.Chinese;
        EXPECT_EQ(form->Label1->Caption(), word.Chinese);
        EXPECT_FALSE(word.Pinyin.contains(u'.')) << "the Pinyin is spoken without punctuation";
        EXPECT_EQ(form->Label4[3]->Caption(), QString::number(n));
        const bool three = word.Chinese == "好";
        EXPECT_EQ(form->MeaningCount, three ? 3 : 1);
        if (three) {
            EXPECT_EQ(form->Answers, QStringList({"good", "fine", "well"}));
        }
        EXPECT_FALSE(isRight(0)) << "the line numbered 1 never holds a right meaning";
        for (int i = 0; i <= kLastOption; ++i) {
            EXPECT_TRUE(line(i)->isVisible());
            EXPECT_EQ(line(i)->toolTip(), isRight(i) ? word.Chinese : QString());
        }

        clickRight();
        clickRight(); // a second click on the word counts for nothing
        EXPECT_EQ(form->CorrectCount, n);
        EXPECT_EQ(form->Label9->Caption(), "Good job!\n正确!");
        EXPECT_TRUE(played().endsWith("Sound/right.WAV"));
        for (int i = 0; i <= kLastOption; ++i) {
            EXPECT_EQ(line(i)->isVisible(), isRight(i));
            EXPECT_TRUE(form->Label8[static_cast<size_t>(i)]->isVisible());
            if (isRight(i)) {
                EXPECT_EQ(line(i)->ForeColor(), 0x0000FFu);
            }
        }
        if (n == 4) break;
        env.clock.Advance(form->MeaningCount * 2000 - 1);
        EXPECT_EQ(form->CurrentWord, n) << "the answer stays two seconds per meaning";
        env.clock.Advance(1);
        EXPECT_EQ(form->CurrentWord, n + 1);
    }
    EXPECT_EQ(seen.size(), 4) << "every word once";

    // Away from the study position the pass ends with the rate alone.
    env.clock.Advance(form->MeaningCount * 2000);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "Your correctness rate is 100%.");
    EXPECT_EQ(env.boxes.Last().title, "Notice");
    EXPECT_EQ(app().StudyTask, 3);
    EXPECT_TRUE(form->Command2->isEnabled());
    EXPECT_TRUE(form->Label1->Caption().isEmpty());
    for (int i = 0; i <= kLastOption; ++i)
        EXPECT_FALSE(form->Label8[static_cast<size_t>(i)]->isVisible());
}

TEST_F(VocabularyTest, AWrongLineReadingLikeTheRightOneAndATimeOutBothCountWrong) {
    setWords({{"你", "you", "ni3"}, {"您", "you", "nin2"}});
    open();
    start();
    for (int i = 0; i <= kLastOption; ++i)
        EXPECT_EQ(line(i)->Caption(), " you ") << "every line reads the same";
    click(0);
    EXPECT_EQ(form->WrongCount, 1);
    EXPECT_EQ(form->CorrectCount, 0);
    EXPECT_EQ(form->Label9->Caption(), "Be careful!\n仔细点!");
    EXPECT_TRUE(played().endsWith("Sound/careful.WAV"));
    EXPECT_EQ(form->Label4[1]->Caption(), "1");
    EXPECT_EQ(form->Label4[2]->Caption(), "0");
    EXPECT_FALSE(line(0)->isVisible());

    env.clock.Advance(2000);
    ASSERT_EQ(form->CurrentWord, 2);
    env.clock.Advance(19 * 1000);
    EXPECT_TRUE(form->Accepting) << "nineteen seconds are still in time";
    env.clock.Advance(1000);
    EXPECT_FALSE(form->Accepting);
    EXPECT_EQ(form->WrongCount, 2);
    EXPECT_EQ(form->Label9->Caption(), "Carry on!\n继续努力!");
    EXPECT_TRUE(played().endsWith("Sound/carryon.WAV"));
    EXPECT_EQ(form->Label4[3]->Caption(), "2");

    // Below the mark: the advice, and the screen keeps what it shows.
    env.clock.Advance(2000);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text,
              "Your correctness rate hasn't reached 80%. Do task 3 again, please.");
    EXPECT_EQ(app().StudyTask, 3);
    EXPECT_FALSE(form->Label1->Caption().isEmpty());
    EXPECT_FALSE(form->Label9->Caption().isEmpty());
    EXPECT_TRUE(form->Command2->isEnabled());
}

TEST_F(VocabularyTest, EightyPassesAndCancelKeepsTheFormOpenToCloseFreely) {
    setWords({{"一", "one", "yi1"},
              {"二", "two", "er4"},
              {"三", "three", "san1"},
              {"四", "four", "si4"},
              {"五", "five", "wu3"}});
    open();
    // Leaving before the task is done asks first; OK stays.
    env.boxes.Answer(Mb::OK);
    form->Command5->click();
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, "Advice");
    EXPECT_EQ(env.rt->forms.Get<Vocabulary>(), form);

    start();
    env.boxes.Answer(Mb::Cancel);
    for (int n = 1; n <= 5; ++n) {
        n == 3 ? clickWrong() : clickRight();
        env.clock.Advance(2000);
    }
    EXPECT_EQ(form->Label4[2]->Caption(), "80");
    EXPECT_EQ(app().StudyTask, 4);
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.boxes.Last().text, "You have finished task 3. Let's go on to do task 4.");

    // Cancel: the form stays, cleared for another pass.
    EXPECT_EQ(env.rt->forms.Get<Vocabulary>(), form);
    EXPECT_TRUE(form->Command2->isEnabled());
    EXPECT_TRUE(form->Label1->Caption().isEmpty());
    form->Command5->click();
    EXPECT_EQ(env.boxes.Count(), 2) << "no warning once the task is done";
    EXPECT_EQ(env.rt->forms.Get<Vocabulary>(), nullptr);
    EXPECT_FALSE(app().VocabularyTaskOpen);
    EXPECT_EQ(app().OpenTask, 0);
}

TEST(VocabularyDraws, NeverEndlessOnDataTheCourseRefuses) {
    SeededRandom random(7);
    Array1<LessonWord> one;
    one.Append({"你", "you", "ni3"});
    EXPECT_TRUE(DrawWrongMeaning(one, 1, random).isEmpty());
    const std::vector<int> lines = DrawAnswerLines(9, kLastOption, random);
    EXPECT_EQ(lines.size(), 7u);
    EXPECT_EQ(std::set<int>(lines.begin(), lines.end()), std::set<int>({1, 2, 3, 4, 5, 6, 7}));
}

// The whole way on the sample course: the lesson menu opens task 3 of lesson 1, every word is
// answered rightly, and the position moves on to task 4, stored at once.
TEST(VocabularyOnTheCourse, AnsweringEveryWordRightlyAdvancesToTaskFour) {
    TestEnv env;
    if (!env.StartOnSampleCourse(1, 3))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    Runtime& rt = *env.rt;
    Begin1* menu = rt.forms.Get<Begin1>();
    ASSERT_TRUE(menu);
    menu->Command1[2]->click();
    Vocabulary* form = rt.forms.Get<Vocabulary>();
    ASSERT_TRUE(form);
    ASSERT_GE(rt.app.LessonWordRows, 2);

    form->Command2->click();
    for (int n = 1; n <= rt.app.LessonWordRows; ++n) {
        ASSERT_EQ(form->CurrentWord, n);
        test::Click(form->Label2[static_cast<size_t>(form->AnswerLines.front())]);
        EXPECT_EQ(form->CorrectCount, n);
        if (n == rt.app.LessonWordRows) env.boxes.Answer(Mb::OK);
        env.clock.Advance(form->MeaningCount * 2000);
    }
    EXPECT_EQ(rt.app.StudyTask, 4);
    EXPECT_EQ(rt.forms.Get<Vocabulary>(), nullptr);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(env.Read("Study.zvk"), PackInt16LE({1, 4}));
}

} // namespace
} // namespace vt
