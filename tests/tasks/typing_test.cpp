// The typing task as the learner meets it: keys on the virtual clock, the verdict and its blink,
// the judgement of a pass at the study position, and the ways out.
#include "tasks/typing.h"

#include "core/knowledge_base.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "platform/timers.h"
#include "shell/begin1.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/test_env.h"

#include <QKeyEvent>
#include <gtest/gtest.h>

using namespace vt;

namespace {

struct Word {
    QString chinese;
    QString pinyin; // dotted, as the word files store it
};

// A runtime, a small course and the learner's keys.
struct TypingEnv {
    // Lesson 1 holds the words given; the character table is built from them and from the extra
    // words (of lesson 2).
    void Course(const std::vector<Word>& lesson, const std::vector<Word>& extra = {}) {
        AppState& app = env.rt->app;
        app.TitleList.ReDim(140);
        app.TitleList[1] = QStringLiteral("Hello");
        for (const Word& w : lesson) {
            app.LessonWords.Append({w.chinese, QStringLiteral("x"), w.pinyin});
            addWord(w, 1);
        }
        app.LessonWordRows = static_cast<int16_t>(app.LessonWords.Count());
        for (const Word& w : extra)
            addWord(w, 2);
        LoadProgress progress;
        BuildCharTable(*env.rt, progress);
        app.OpenLesson = 1;
        app.OpenTask = 2;
        app.StudyLesson = 1;
        app.StudyTask = 2;
    }
    void addWord(const Word& w, int lesson) {
        AppState& app = env.rt->app;
        app.WordTable.Append({w.chinese, {}});
        app.WordPinyin.Append(w.pinyin);
        app.WordOrigin.Append({1, static_cast<int16_t>(lesson)});
        app.WordCount = static_cast<int16_t>(app.WordTable.Count());
    }

    Typing* open() {
        form = env.rt->forms.Load<Typing>();
        if (form) form->Show();
        return form;
    }

    void key(int qtKey, const QString& text = {}, Qt::KeyboardModifiers m = Qt::NoModifier) {
        QKeyEvent e(QEvent::KeyPress, qtKey, m, text);
        QApplication::sendEvent(form->Client(), &e);
    }
    void letters(const QString& typed) {
        for (QChar c : typed)
            key(Qt::Key_A + (c.unicode() - u'a'), QString(c));
    }
    void digit(int n) { key(Qt::Key_0 + n, QString::number(n)); }

    QString target() const { return form->Label1->Caption(); }
    // The letters of the character shown, as its syllable spells them.
    QString spelling() const {
        const TargetChar& t = form->TargetChars()[form->Progress().TargetIndex];
        return TargetSoundSyllable(t.Pinyin).chopped(1);
    }

    // Types the letters of the character shown and picks it (right) or another one (wrong) from
    // the list, paging to it when needed.
    void answer(bool right, QString wrongSpelling = {}) {
        // A wrong answer spells another character of the drill unless told otherwise.
        for (const TargetChar& other : form->TargetChars())
            if (wrongSpelling.isEmpty() && other.Character != target())
                wrongSpelling = TargetSoundSyllable(other.Pinyin).chopped(1);
        const QString typed = right ? spelling() : wrongSpelling;
        letters(typed.left(5));
        const InputMethod& im = form->Input();
        for (int page = 1;; ++page) {
            for (int k = 1; k <= 9; ++k) {
                const Candidate* c = im.PageItem(k);
                if (c && (im.EntryOf(*c).Character == target()) == right) {
                    digit(k);
                    return;
                }
            }
            ASSERT_LT(page, im.CandidatePages()) << "not in the list: " << target().toStdString();
            key(Qt::Key_Equal, QStringLiteral("="));
        }
    }
    // An answer, and the verdict blinks to its end.
    void answerAndWait(bool right, const QString& wrongSpelling = {}) {
        answer(right, wrongSpelling);
        env.clock.Advance(9 * 400);
    }
    QString played() const { return env.rt->sound->MMControl1->FileName(); }

    test::TestEnv env;
    Typing* form = nullptr;
};

} // namespace

TEST(Typing, ShowsTheCharacterSaysItAndJudgesThePickByTheCharacterAlone) {
    TypingEnv t;
    t.Course({{"中国", "zh.ong1 g.uo2"}}, {{"钟", "zh.ong1"}, {"种", "zh.ong3"}});
    t.env.rt->app.StudyTask = 3; // done before: no pass is judged here
    Typing* f = t.open();
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->Label16->Caption(), QStringLiteral("Lesson 1 - Hello"));
    EXPECT_EQ(f->Label17->Caption(), QStringLiteral("1 / 2"));
    f->Form_Activate(); // the first activation puts the first prompt up
    EXPECT_EQ(f->Label6->Caption(), kFirstPrompt);

    // Move to 中 whatever the random start was.
    int rightSoFar = 0;
    if (t.target() != QStringLiteral("中")) {
        t.answer(true);
        rightSoFar = 1;
        t.key(Qt::Key_X, QStringLiteral("x")); // any key ends a right verdict at once
    }
    ASSERT_EQ(t.target(), QStringLiteral("中"));
    EXPECT_EQ(f->Label3->Caption(), QStringLiteral("zhōng"));
    t.env.clock.Advance(500);
    EXPECT_TRUE(t.played().endsWith(QStringLiteral("Phonetic Symbols/Z/zhong1.wav")));
    EXPECT_EQ(t.env.rt->app.CurrentTone, QStringLiteral("1"));

    t.letters(QStringLiteral("zhong"));
    EXPECT_EQ(f->Label5->Caption(), QStringLiteral(" 1 中  2 钟  3 种 "));
    EXPECT_EQ(f->Label6->Caption(), kPressSpace);
    t.digit(3); // 种 in the third tone: a wrong character
    EXPECT_EQ(f->Label4->Caption(), QStringLiteral("种"));
    EXPECT_EQ(f->Label6->Caption(), kWrongVerdict);
    EXPECT_TRUE(t.played().endsWith(QStringLiteral("Phonetic Symbols/Z/zhong3.wav")));
    EXPECT_EQ(f->Label10->Caption(),
              QStringLiteral("Correct: %1 , Wrong: 1 , Correctness Rate: %2 %")
                  .arg(rightSoFar)
                  .arg(rightSoFar ? 50 : 0));

    // The verdict blinks eight times and stays; Escape does nothing meanwhile.
    t.key(Qt::Key_Escape);
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), f);
    EXPECT_EQ(t.env.boxes.Count(), 0);
    t.env.clock.Advance(400);
    EXPECT_TRUE(f->Label6->isHidden());
    t.env.clock.Advance(7 * 400);
    EXPECT_FALSE(f->Label6->isHidden());
    t.env.clock.Advance(400);
    EXPECT_EQ(t.target(), QStringLiteral("国"));
    EXPECT_TRUE(f->InputEnabled());
}

TEST(Typing, KeysThatFindNothingToDoChangeNothing) {
    TypingEnv t;
    t.Course({{"装", "zh.uang1"}}, {{"专", "zh.uan1"},
                                    {"妈", "m.a1"},
                                    {"马", "m.a3"},
                                    {"吗", "m.a0"},
                                    {"骂", "m.a4"},
                                    {"麻", "m.a2"}});
    Typing* f = t.open();
    ASSERT_EQ(t.target(), QStringLiteral("装"));

    // No list: space, a number and the paging keys do nothing.
    t.key(Qt::Key_Space, QStringLiteral(" "));
    t.digit(1);
    t.key(Qt::Key_Equal, QStringLiteral("="));
    t.key(Qt::Key_Minus, QStringLiteral("-"));
    EXPECT_EQ(f->Label4->Caption(), QStringLiteral("?"));

    // A page of five: the seventh is not there, the paging keys stay on the page.
    t.letters(QStringLiteral("ma"));
    EXPECT_EQ(f->Label5->Caption(), QStringLiteral(" 1 妈  2 马  3 吗  4 骂  5 麻 "));
    EXPECT_EQ(f->Label6->Caption(), kPressNumber);
    t.digit(7);
    t.key(Qt::Key_Plus, QStringLiteral("+"), Qt::ShiftModifier);
    t.key(Qt::Key_Underscore, QStringLiteral("_"), Qt::ShiftModifier);
    t.key(Qt::Key_1, QStringLiteral("1"), Qt::KeypadModifier); // the keypad is not taken
    EXPECT_EQ(f->Label5->Caption(), QStringLiteral(" 1 妈  2 马  3 吗  4 骂  5 麻 "));
    EXPECT_EQ(f->Label4->Caption(), QStringLiteral("?"));

    // Letters that fit nothing stay to be mended; backspace to none clears the list.
    t.letters(QStringLiteral("x"));
    EXPECT_EQ(f->Label6->Caption(), kNoSuchPinyin);
    EXPECT_EQ(f->Label5->Caption(), QString());
    for (int i = 0; i < 4; ++i)
        t.key(Qt::Key_Backspace);
    EXPECT_EQ(f->Label8->Caption(), QStringLiteral(" "));
    EXPECT_EQ(f->Label6->Caption(), kTypePrompt);

    // Five letters at most: "zhuang" is picked from the list of "zhuan", after the exact one.
    t.letters(QStringLiteral("zhuang"));
    EXPECT_EQ(f->Label8->Caption(), QStringLiteral(" zhuan"));
    EXPECT_EQ(f->Label5->Caption(), QStringLiteral(" 1 专  2 装 "));
    EXPECT_EQ(f->Label6->Caption(), kPressNumber);
    t.digit(2);
    EXPECT_EQ(f->Label6->Caption(), kRightVerdict);
    // After a right answer any key moves on, Escape too: here to the end of the pass.
    t.key(Qt::Key_Escape);
    ASSERT_EQ(t.env.boxes.Count(), 1);
    EXPECT_EQ(t.env.boxes.Last().text,
              QStringLiteral("You have finished task 2. Let's go on to do task 3."));
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), f);
}

TEST(Typing, APassBelowTheMarkStartsAgainWhereTheDrillStands) {
    // Nineteen characters read alike: their list runs over three pages.
    std::vector<Word> nineteen;
    for (int i = 0; i < 19; ++i)
        nineteen.push_back({QString(QChar(0x4E00 + i)), QStringLiteral("m.a1")});
    TypingEnv t;
    t.Course(nineteen);
    Typing* f = t.open();
    ASSERT_EQ(f->Progress().TargetCount, 19);

    // 15 right and 4 wrong: 78.9 % is 79.
    int16_t lastShown = 0;
    for (int i = 0; i < 19; ++i) {
        lastShown = f->Progress().TargetIndex;
        t.answerAndWait(i >= 4);
        if (i < 18) {
            EXPECT_EQ(t.env.boxes.Count(), 0);
        }
    }
    ASSERT_EQ(t.env.boxes.Count(), 1);
    EXPECT_EQ(t.env.boxes.Last().text,
              QStringLiteral("Your correctness rate hasn't reached 80%. Do task 2 again, please."));
    EXPECT_EQ(t.env.boxes.Last().title, QStringLiteral("Advice"));
    EXPECT_EQ(t.env.rt->app.StudyTask, 2);
    EXPECT_EQ(f->Label17->Caption(), QStringLiteral("1 / 19"));
    EXPECT_EQ(f->Label10->Caption(),
              QStringLiteral("Correct: 0 , Wrong: 0 , Correctness Rate: 0 %"));
    // The new pass follows on from the last character, not from the first of the old pass.
    EXPECT_EQ(f->Progress().TargetIndex, lastShown % 19 + 1);
    EXPECT_TRUE(f->InputEnabled());
    EXPECT_FALSE(f->LeaveFreely());
}

TEST(Typing, AGoodPassMovesThePositionOnAndCancelKeepsTheDrillGoing) {
    TypingEnv t;
    t.Course({{"你好", "n.i3 h.ao3"}});
    Typing* f = t.open();
    t.answerAndWait(true);
    t.env.boxes.Answer(Mb::Cancel);
    t.answer(true);
    t.key(Qt::Key_Space, QStringLiteral(" ")); // any key moves on, and the pass is judged
    ASSERT_EQ(t.env.boxes.Count(), 1);
    EXPECT_EQ(t.env.boxes.Last().text,
              QStringLiteral("You have finished task 2. Let's go on to do task 3."));
    EXPECT_EQ(t.env.boxes.Last().flags, Mb::OKCancel | Mb::Information);
    // The position moved on before the box, and Cancel does not take it back.
    EXPECT_EQ(t.env.rt->app.StudyTask, 3);
    EXPECT_TRUE(f->LeaveFreely());
    EXPECT_EQ(f->Label17->Caption(), QStringLiteral("1 / 2"));
    EXPECT_TRUE(f->InputEnabled());
    EXPECT_FALSE(f->Label6->isHidden());

    // The next pass is not judged any more, and leaving asks nothing.
    t.answerAndWait(true);
    t.answerAndWait(false);
    t.answerAndWait(true);
    EXPECT_EQ(t.env.boxes.Count(), 1);
    t.key(Qt::Key_Escape);
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), nullptr);
    EXPECT_EQ(t.env.rt->app.OpenTask, 0);
    EXPECT_EQ(t.env.boxes.Count(), 1);
}

TEST(Typing, ALessonAheadOfThePositionIsNeverJudged) {
    TypingEnv t;
    t.Course({{"你好", "n.i3 h.ao3"}});
    t.env.rt->app.StudyLesson = 0; // the position stands before this lesson's task
    t.env.rt->app.StudyTask = 7;
    Typing* f = t.open();
    for (int i = 0; i < 5; ++i)
        t.answerAndWait(true);
    EXPECT_EQ(t.env.boxes.Count(), 0);
    EXPECT_EQ(f->Label17->Caption(), QStringLiteral("6 / 2"));
    EXPECT_EQ(t.env.rt->app.StudyTask, 7);
    t.key(Qt::Key_Escape); // and leaving asks nothing
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), nullptr);
}

TEST(Typing, LeavingAnUnfinishedTaskAsksAndOkStays) {
    TypingEnv t;
    t.Course({{"你", "n.i3"}});
    Typing* f = t.open();
    t.env.boxes.Answer(Mb::OK);
    t.key(Qt::Key_Escape);
    ASSERT_EQ(t.env.boxes.Count(), 1);
    EXPECT_EQ(t.env.boxes.Last().title, QStringLiteral("Advice"));
    EXPECT_TRUE(t.env.boxes.Last().text.startsWith(QStringLiteral("You haven't finished task 2")));
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), f);
    EXPECT_EQ(t.env.rt->app.OpenTask, 2);

    t.env.boxes.Answer(Mb::Cancel);
    test::Click(f->Image3);
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), nullptr);
    EXPECT_EQ(t.env.rt->app.OpenTask, 0);
    EXPECT_EQ(t.env.rt->app.StudyTask, 2);
}

TEST(Typing, TheSwitchTheFocusAndHearingAgain) {
    TypingEnv t;
    t.Course({{"你", "n.i3"}});
    t.env.rt->app.StudyTask = 3;
    Typing* f = t.open();
    test::Click(f->Label11);
    EXPECT_EQ(f->Label11->Caption(), QStringLiteral("Hide Pinyin"));
    EXPECT_FALSE(f->Shape1->Filled);
    EXPECT_TRUE(f->Label3->isHidden());
    t.answerAndWait(true); // the switch holds from character to character
    EXPECT_TRUE(f->Label3->isHidden());

    f->Form_Deactivate();
    EXPECT_EQ(f->Label6->Caption(), kFocusLost);
    EXPECT_TRUE(f->Label8->isHidden());
    f->Form_Activate();
    EXPECT_EQ(f->Label6->Caption(), kTypePrompt);

    // The first click after the focus came back says the character; the next replays.
    t.env.rt->sound->MMControl1->SetFileName(QString());
    test::Click(f->Label1);
    EXPECT_TRUE(t.played().endsWith(QStringLiteral("Phonetic Symbols/N/ni3.wav")));
    t.env.rt->sound->MMControl1->SetFileName(QStringLiteral("kept"));
    test::Click(f->Client(), {4, 300});
    EXPECT_EQ(t.played(), QStringLiteral("kept")); // replays what is open
}

TEST(Typing, ALessonWithNothingNewMovesOnAndCloses) {
    TypingEnv t;
    t.Course({{"你", "n.i3"}});
    t.env.rt->app.OpenLesson = 2;
    t.env.rt->app.StudyLesson = 2;
    Typing* f = t.open();
    ASSERT_NE(f, nullptr);
    ASSERT_EQ(t.env.boxes.Count(), 1);
    EXPECT_EQ(t.env.boxes.Last().text,
              QStringLiteral("There is no new Chinese characters in this lesson."));
    EXPECT_EQ(t.env.boxes.Last().title, QStringLiteral("Notice"));
    EXPECT_EQ(t.env.rt->app.StudyTask, 3);
    t.env.clock.Advance(199);
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), f);
    t.env.clock.Advance(1);
    EXPECT_EQ(t.env.rt->forms.Get<Typing>(), nullptr);
    EXPECT_EQ(t.env.boxes.Count(), 1);
}

TEST(TypingOnTheCourse, APassOfLessonOneTypedFromTheMenuMovesOnToTaskThree) {
    TypingEnv t;
    test::TestEnv& env = t.env;
    if (!env.StartOnSampleCourse(1, 2))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    Runtime& rt = *env.rt;
    Begin1* menu = rt.forms.Get<Begin1>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(rt.app.StudyTask, 2);
    ASSERT_TRUE(menu->Command1[1]->isEnabled());

    menu->Command1[1]->click();
    t.form = rt.forms.Get<Typing>();
    ASSERT_NE(t.form, nullptr);
    EXPECT_FALSE(menu->Visible());
    EXPECT_EQ(t.form->Caption(), QStringLiteral("Lesson 1"));
    const int count = t.form->Progress().TargetCount;
    ASSERT_GT(count, 5);
    for (int i = 1; i <= count; ++i) {
        EXPECT_EQ(t.form->Label17->Caption(), QStringLiteral("%1 / %2").arg(i).arg(count));
        t.answerAndWait(true);
    }
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text,
              QStringLiteral("You have finished task 2. Let's go on to do task 3."));
    EXPECT_EQ(t.form->Label10->Caption(),
              QStringLiteral("Correct: %1 , Wrong: 0 , Correctness Rate: 100 %").arg(count));

    // OK: the form goes 200 ms later, and the menu shows task 3 as the one to do.
    env.clock.Advance(200);
    EXPECT_EQ(rt.forms.Get<Typing>(), nullptr);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(rt.app.OpenTask, 0);
    EXPECT_EQ(menu->Label2[1]->ForeColor(), kTaskDone);
    EXPECT_EQ(menu->Label2[2]->ForeColor(), kTaskCurrent);
    EXPECT_TRUE(menu->Command1[2]->isEnabled());
    EXPECT_EQ(env.Read(QStringLiteral("Study.zvk")), PackInt16LE({1, 3}));
}
