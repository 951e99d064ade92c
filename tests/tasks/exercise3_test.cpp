// The blank-filling task as the learner works it: Start, pick a blank, fill it from the four
// characters, Done, and the list of results below. Seeded random, scripted boxes, virtual clock.
#include "shell/begin1.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/small_course.h"
#include "support/test_env.h"
#include "tasks/exercise3.h"
#include "tasks/result1.h"

#include <gtest/gtest.h>
#include <map>

using namespace vt;
using vt::test::TestEnv;

namespace {

const QString kShortText = QStringLiteral("你好\n我是学生，我是学生。");
const QString kLongText = QStringLiteral("你好\n我是学生，我叫王明。\n  我们都在北京大学学习中文。"
                                         "\n  老师说：你们好！今天我们学习第一课。");

// Lesson 1 open at task 4, the study position, with the text given (lines split at "\n") and a
// small character table; Result1 below the task as the lesson menu opens them.
struct Task4 {
    explicit Task4(const QString& text, int studyTask = 4) {
        AppState& app = env.rt->app;
        app.OpenLesson = 1;
        app.OpenTask = 4;
        app.StudyLesson = 1;
        app.StudyTask = static_cast<int16_t>(studyTask);
        for (const QString& line : text.split(u'\n'))
            app.TextLines.Append(line);
        app.TextLineCount = static_cast<int16_t>(app.TextLines.Count());
        app.TextTitle = app.TextLines[1];
        for (const auto& [c, reading] :
             {std::pair{"我", "w.o3"}, {"是", "sh.i4"}, {"学", "x.ue2"}, {"生", "sh.eng1"}})
            test::AddCharacter(app, c, {reading});
        results = env.rt->forms.Load<Result1>();
        form = env.rt->forms.Load<Exercise3>();
        form->Show();
        results->Show();
    }
    AppState& app() { return env.rt->app; }
    QStringList captions() const {
        QStringList c;
        for (int i = 1; i <= 4; ++i)
            c << form->Label1[static_cast<size_t>(i)]->Caption();
        return c;
    }
    // The candidate that offers the character, 0 for none.
    int candidate(const QString& character) const { return captions().indexOf(character) + 1; }
    // Fills the blank shown with its own character, or with another one offered.
    void fillShown(bool rightly) {
        const QString own = app().Blanks[form->CurrentBlank + 1].Character;
        int pick = candidate(own);
        if (!rightly)
            for (int i = 1; i <= 4 && pick == candidate(own); ++i)
                if (form->Label1[static_cast<size_t>(i)]->Caption() != own) pick = i;
        ASSERT_GT(pick, 0);
        test::Click(form->Label1[static_cast<size_t>(pick)]);
    }
    void start() { form->Command4->click(); }
    // Starts again with other draws until the text has from `least` to `most` blanks.
    void startWithBlanks(int least, int most) {
        for (uint64_t seed = 1; seed < 500; ++seed) {
            env.random.Reseed(seed);
            start();
            if (app().BlankCount >= least && app().BlankCount <= most) return;
            done(Mb::Yes); // the advice box then takes its default
        }
        FAIL() << "no draw gave " << least << " to " << most << " blanks";
    }
    // The recording a character of the small table is said with.
    static QString soundOf(const QString& character) {
        static const std::map<QString, QString> files = {{"我", "W/wo3.wav"},
                                                         {"是", "S/shi4.wav"},
                                                         {"学", "X/xue2.wav"},
                                                         {"生", "S/sheng1.wav"}};
        const auto it = files.find(character);
        return it == files.end() ? QString() : "Phonetic Symbols/" + it->second;
    }
    void done(int answer) {
        env.boxes.Answer(answer);
        form->Command4->click();
    }

    TestEnv env;
    Exercise3* form = nullptr;
    Result1* results = nullptr;
};

} // namespace

// Few blanks share one set of four: picking another blank changes nothing at the bottom; each
// pick marks the blank's two underscores, and filling one brings up the next.
TEST(BlankFillingTask, FewBlanksKeepTheirCandidatesAndFillingMovesOn) {
    Task4 t(kShortText);
    t.startWithBlanks(2, 4);
    const int count = t.app().BlankCount;
    EXPECT_EQ(t.form->Command4->Caption(), "Done");
    EXPECT_EQ(t.form->Label4->Caption(), "0");
    EXPECT_TRUE(t.form->Text1->Text().startsWith(QString(52, u' ')));
    const QStringList offered = t.captions();
    for (int n = 1; n <= count; ++n) {
        EXPECT_GT(t.candidate(t.app().Blanks[n].Character), 0);
        t.form->Combo1->SetListIndex(n - 1);
        EXPECT_EQ(t.captions(), offered);
        EXPECT_EQ(t.form->Text1->SelText(), "__");
        EXPECT_TRUE(t.form->Text1->Text()
                        .left(t.form->Text1->SelStart())
                        .endsWith(QStringLiteral("(%1)").arg(n)));
    }

    // The arrows stop at the ends.
    EXPECT_TRUE(t.form->Command1->isEnabled());
    EXPECT_FALSE(t.form->Command3->isEnabled());
    t.form->Command1->click();
    EXPECT_EQ(t.form->Combo1->ListIndex(), count - 2);

    t.form->Combo1->SetListIndex(0);
    EXPECT_FALSE(t.form->Command1->isEnabled());
    t.fillShown(true);
    EXPECT_EQ(t.form->Combo1->itemText(0), "1 - " + t.app().Blanks[1].Character);
    EXPECT_EQ(t.app().Blanks[1].Answer, t.app().Blanks[1].Character);
    EXPECT_TRUE(t.form->Answered);
    EXPECT_EQ(t.form->Combo1->ListIndex(), 1);
    // Refilling the first blank replaces its answer.
    t.form->Combo1->SetListIndex(0);
    t.fillShown(false);
    EXPECT_NE(t.app().Blanks[1].Answer, t.app().Blanks[1].Character);
    EXPECT_EQ(t.form->Combo1->count(), count);
}

// "No" keeps everything as it was; all blanks left empty then give 0, each listed as a blank,
// and at the study position the advice to try again (which names task 5, without a full stop).
TEST(BlankFillingTask, NoKeepsTheAnswersAndAllEmptyRatesZero) {
    Task4 t(kLongText);
    t.startWithBlanks(1, 100);
    t.fillShown(true);
    t.done(Mb::No);
    const Blank first = t.app().Blanks[1];
    EXPECT_EQ(first.Answer, first.Character);
    EXPECT_EQ(t.form->Command4->Caption(), "Done");
    EXPECT_EQ(t.env.boxes.Last().title, "Attention");
    EXPECT_EQ(t.env.boxes.Last().flags, Mb::YesNo | Mb::DefaultButton2 | Mb::Question);
    EXPECT_EQ(t.results->ListView1->Count(), 0);

    // Start again: a new set of blanks, all left empty.
    t.done(Mb::Yes);
    t.start();
    EXPECT_EQ(t.results->ListView1->Count(), 0);
    t.done(Mb::Yes);
    EXPECT_EQ(t.form->Label4->Caption(), "0");
    EXPECT_EQ(t.form->EmptyCount, t.app().BlankCount);
    ASSERT_EQ(t.results->ListView1->Count(), t.app().BlankCount);
    for (int n = 1; n <= t.app().BlankCount; ++n) {
        EXPECT_EQ(t.results->ListView1->Text(n, 0), QString::number(n));
        EXPECT_EQ(t.results->ListView1->Text(n, 1), t.app().Blanks[n].Character);
        EXPECT_EQ(t.results->ListView1->Text(n, 2), "___(Blank)  未填");
    }
    EXPECT_EQ(t.env.boxes.Last().text,
              "Your correctness rate hasn't reached 80%. Do task 5 again, please");
    EXPECT_EQ(t.app().StudyTask, 4);
    EXPECT_EQ(t.captions(), QStringList(4, QString()));
    EXPECT_FALSE(t.form->Combo1->isEnabled());
    EXPECT_EQ(t.form->Command4->Caption(), "Start");
}

// Exactly 80 % passes: the position moves on to task 5, and OK closes the task.
TEST(BlankFillingTask, EightyPercentPassesAndOkLeavesForTheMenu) {
    Task4 t(kLongText);
    for (uint64_t seed = 1; seed < 200; ++seed) {
        t.env.random.Reseed(seed);
        t.start();
        if (t.app().BlankCount % 5 == 0) break;
        t.done(Mb::Yes); // and the advice box takes its default
    }
    const int count = t.app().BlankCount;
    ASSERT_EQ(count % 5, 0);
    for (int n = 1; n <= count; ++n) {
        t.form->Combo1->SetListIndex(n - 1);
        t.fillShown(n > count / 5);
    }
    t.env.boxes.Answer(Mb::Yes);
    t.env.boxes.Answer(Mb::OK);
    t.form->Command4->click();
    EXPECT_EQ(t.env.boxes.Last().text, "You have finished task 4. Let's  go on to do task 5.");
    EXPECT_EQ(t.env.boxes.Last().flags, Mb::OKCancel | Mb::Information);
    EXPECT_EQ(t.app().StudyLesson, 1);
    EXPECT_EQ(t.app().StudyTask, 5);
    EXPECT_EQ(t.env.rt->forms.Get<Exercise3>(), nullptr);
    EXPECT_EQ(t.env.rt->forms.Get<Result1>(), nullptr);
    EXPECT_EQ(t.app().OpenTask, 0);
    EXPECT_FALSE(t.app().DictionaryFeedsTask);
}

// A candidate under the mouse lights up and, after 400 ms of rest, says its character; moving
// off it puts the light out before it speaks.
TEST(BlankFillingTask, ACandidateRestedOnSaysItsCharacter) {
    Task4 t(kShortText);
    t.startWithBlanks(2, 4);
    int said = 0; // a candidate the table can say
    for (int i = 1; i <= 4 && !said; ++i)
        if (!Task4::soundOf(t.captions()[i - 1]).isEmpty()) said = i;
    ASSERT_GT(said, 0);
    const QString file = Task4::soundOf(t.captions()[said - 1]);
    MMControl* player = t.env.rt->sound->MMControl1;
    test::MouseMoveOver(t.form->Label1[static_cast<size_t>(said)]);
    EXPECT_EQ(t.form->HoverCandidate, said);
    t.env.clock.Advance(399);
    EXPECT_FALSE(player->FileName().endsWith(file));
    t.env.clock.Advance(1);
    EXPECT_TRUE(player->FileName().endsWith(file)) << player->FileName().toStdString();

    player->SetFileName({});
    test::MouseMoveOver(t.form->Label1[static_cast<size_t>(said)]);
    test::MouseMoveOver(t.form->Client(), {2, 2});
    EXPECT_EQ(t.form->HoverCandidate, 0);
    t.env.clock.Advance(1000);
    EXPECT_TRUE(player->FileName().isEmpty());

    // Leaving it straight for another control puts the light out as well.
    test::MouseMoveOver(t.form->Label1[static_cast<size_t>(said)]);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(t.form->Label1[static_cast<size_t>(said)], &leave);
    EXPECT_EQ(t.form->HoverCandidate, 0);
    t.env.clock.Advance(1000);
    EXPECT_TRUE(player->FileName().isEmpty());
}

// A row of the results marks its blank in the text and says its character.
TEST(BlankFillingTask, ARowOfTheResultsShowsItsBlankAndSaysIt) {
    Task4 t(kShortText);
    t.startWithBlanks(2, 4);
    t.done(Mb::Yes);
    const int count = t.app().BlankCount;
    Q_EMIT t.results->ListView1->ItemClick(count);
    EXPECT_EQ(t.form->Text1->SelText(), "__");
    EXPECT_TRUE(t.form->Text1->Text()
                    .left(t.form->Text1->SelStart())
                    .endsWith(QStringLiteral("(%1)").arg(count)));
    for (int n = 1; n <= count; ++n) {
        const QString file = Task4::soundOf(t.app().Blanks[n].Character);
        EXPECT_EQ(t.results->ResultChars[n] > 0, !file.isEmpty());
        if (file.isEmpty()) continue;
        t.env.rt->sound->MMControl1->SetFileName({});
        Q_EMIT t.results->ListView1->ItemClick(n);
        EXPECT_TRUE(t.env.rt->sound->MMControl1->FileName().endsWith(file));
    }
}

// Leaving the task at the study position before passing it asks, and OK stays; Escape asks too.
// Away from the position nothing is asked.
TEST(BlankFillingTask, LeavingUnfinishedAsksAndOkStays) {
    Task4 t(kShortText);
    EXPECT_TRUE(t.app().DictionaryFeedsTask);
    t.env.boxes.Answer(Mb::OK);
    test::PressKey(t.form, Qt::Key_Escape);
    EXPECT_EQ(t.env.boxes.Last().text, "You haven't finished task 4 yet. Let's finish task 4 now, "
                                       "otherwise you are unable to do the next task.");
    ASSERT_EQ(t.env.rt->forms.Get<Exercise3>(), t.form);
    t.env.boxes.Answer(Mb::Cancel);
    t.form->Command2->click();
    EXPECT_EQ(t.env.rt->forms.Get<Exercise3>(), nullptr);
    EXPECT_EQ(t.env.rt->forms.Get<Result1>(), nullptr);
    EXPECT_EQ(t.app().OpenTask, 0);
    EXPECT_FALSE(t.app().DictionaryFeedsTask);

    Task4 again(kShortText, 5);
    again.form->Command2->click();
    EXPECT_EQ(again.env.boxes.Count(), 0);
    EXPECT_EQ(again.env.rt->forms.Get<Exercise3>(), nullptr);
}

// The whole way on the sample course: the lesson menu opens task 4 of lesson 1, every blank is
// filled rightly, and the position moves on to task 5, stored at once.
TEST(BlankFillingOnTheCourse, FillingEveryBlankRightlyAdvancesToTaskFive) {
    TestEnv env;
    if (!env.StartOnSampleCourse(1, 4))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    Runtime& rt = *env.rt;
    Begin1* menu = rt.forms.Get<Begin1>();
    ASSERT_TRUE(menu);
    ASSERT_EQ(rt.app.StudyTask, 4);
    menu->Command1[3]->click();
    Exercise3* form = rt.forms.Get<Exercise3>();
    ASSERT_TRUE(form);
    EXPECT_FALSE(menu->Visible());
    ASSERT_TRUE(rt.forms.Get<Result1>());

    form->Command4->click();
    const int count = rt.app.BlankCount;
    ASSERT_GT(count, 0);
    for (int n = 1; n <= count; ++n) {
        ASSERT_EQ(form->Combo1->ListIndex(), n - 1);
        int pick = 0;
        for (int i = 1; i <= 4; ++i)
            if (form->Label1[static_cast<size_t>(i)]->Caption() == rt.app.Blanks[n].Character)
                pick = i;
        ASSERT_GT(pick, 0) << "blank " << n;
        test::Click(form->Label1[static_cast<size_t>(pick)]);
    }
    env.boxes.Answer(Mb::Yes);
    env.boxes.Answer(Mb::OK);
    form->Command4->click();
    EXPECT_EQ(rt.app.StudyTask, 5);
    EXPECT_EQ(rt.forms.Get<Exercise3>(), nullptr);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(env.Read("Study.zvk"), PackInt16LE({1, 5}));
}
