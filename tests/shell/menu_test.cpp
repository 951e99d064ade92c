// The lesson menu as the learner uses it: the lessons, the task list by the study position, the
// focus, coming back to it, the mouse handed on to the main screen, and opening a task's stack.
#include "core/script_file.h"
#include "shell/begin1.h"
#include "shell/form_stacks.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/test_env.h"

#include <QApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>
#include <map>

using namespace vt;
using vt::test::TestEnv;

namespace {

// Sizes of the stand-in forms, in twips, by name.
std::map<QString, QSize>& fakeSizes() {
    static std::map<QString, QSize> sizes;
    return sizes;
}

// A stand-in for a form of the program: it has only a name and a size, and notes the mouse moves
// it is given. The name of the next one to load is set just before loading it.
class FakeForm : public AppForm {
    Q_OBJECT
public:
    static inline const char* kName = "";
    explicit FakeForm(Runtime& runtime) : AppForm(runtime, kName) {
        const QSize s = fakeSizes()[objectName()];
        Move(0, 0, s.width(), s.height());
    }
    void Form_MouseMove(int, int, int x, int y) override { moves.append(QPoint(x, y)); }
    QList<QPoint> moves;
};

FakeForm* loadFake(Runtime& rt, const char* name) {
    FakeForm::kName = name;
    return rt.forms.Load<FakeForm>();
}

// Stand-ins for every form of the task stacks, registered by name as the program registers its
// forms.
void registerTaskForms(Runtime& rt) {
    for (const char* name :
         {"Text", "ListeningTV", "Typing", "Vocabulary", "Exercise3", "FindSentence", "Question",
          "Newwords", "Dictionary", "Notepad", "WordsPanel", "Expressions_Related", "Result1"})
        rt.forms.Register(QString::fromLatin1(name), [&rt, name] { return loadFake(rt, name); });
}

// A menu on a course of 140 titled lessons, loaded at the given position and shown.
struct MenuEnv : TestEnv {
    MenuEnv(int lesson, int task) {
        for (int n = 1; n <= kLessonCount; ++n)
            rt->app.TitleList.Append(QStringLiteral("Title %1").arg(n));
        rt->app.StudyLesson = static_cast<int16_t>(lesson);
        rt->app.StudyTask = static_cast<int16_t>(task);
        // Every lesson the tests choose has its files, so no warning is expected.
        for (int n : {1, 3, 81, 140}) {
            const QString folder = QStringLiteral("Lessons\\Script\\Lesson_%1\\").arg(n);
            WriteScriptFile(files, Path(folder + "icwp.zvk"), {"n.i3", "你", "you"}, "RW", 2);
            WriteScriptFile(files, Path(folder + "lifr.zvk"),
                            {QString::number(n), n == 81 ? "The first episode" : "Text", "A: hi"},
                            "RT", 3);
        }
        // The forms stand on a desktop, as in the program, so their places are exact.
        desktop.setGeometry(0, 0, 1024, 768);
        desktop.show();
        rt->forms.SetDesktop(&desktop);
        begin = loadFake(*rt, "Begin");
        begin->Show();
        menu = rt->forms.Load<Begin1>();
        menu->Show(begin);
    }
    ~MenuEnv() {
        for (Form* f : rt->forms.All())
            rt->forms.Unload(f);
    }
    QWidget desktop;
    FakeForm* begin = nullptr;
    Begin1* menu = nullptr;
};

QString colours(const Begin1* m) {
    QString s;
    for (int i = 0; i < 7; ++i)
        s += m->Label2[static_cast<size_t>(i)]->ForeColor() == kTaskDone      ? u'g'
             : m->Label2[static_cast<size_t>(i)]->ForeColor() == kTaskCurrent ? u'r'
                                                                              : u'b';
    return s;
}
QString enabled(const Begin1* m) {
    QString s;
    for (const CommandButton* b : m->Command1)
        s += b->isEnabled() ? u'1' : u'0';
    return s;
}
int focused(const Begin1* m) {
    for (int i = 0; i < 8; ++i)
        if (m->focusWidget() == m->Command1[static_cast<size_t>(i)]) return i;
    return -1;
}

} // namespace

TEST(LessonMenu, OpensOnTheStudyPositionAndFollowsTheChoice) {
    struct Row {
        const char* name;
        int lesson, task;
        int choose; // row of Combo1 chosen afterwards, or -1
        int wantIndex;
        const char* colours;
        const char* enabled;
        int focus;
    } rows[] = {
        {"first start", 1, 1, -1, 0, "rbbbbbb", "10000001", 0},
        {"at lesson 3, task 2", 3, 2, -1, 2, "grbbbbb", "11000001", 1},
        {"a lesson before the position", 3, 2, 0, 0, "ggggggg", "11111111", 7},
        {"a lesson after the position", 3, 2, 80, 80, "bbbbbbb", "10000001", 7},
        {"course finished: lesson 141", 141, 1, -1, 139, "ggggggg", "11111111", 7},
        {"garbled position", 30000, 1, -1, 139, "ggggggg", "11111111", 7},
    };
    for (const Row& r : rows) {
        MenuEnv env(r.lesson, r.task);
        Begin1* m = env.menu;
        ASSERT_EQ(m->Combo1->count(), 140) << r.name;
        EXPECT_EQ(m->Combo1->itemText(80), " 81 - Title 81") << r.name;
        if (r.choose >= 0) m->Combo1->SetListIndex(r.choose);
        EXPECT_EQ(m->Combo1->ListIndex(), r.wantIndex) << r.name;
        EXPECT_EQ(env.rt->app.OpenLesson, r.wantIndex + 1) << r.name;
        EXPECT_EQ(colours(m), r.colours) << r.name;
        EXPECT_EQ(enabled(m), r.enabled) << r.name;
        EXPECT_EQ(focused(m), r.focus) << r.name;
        EXPECT_EQ(env.boxes.Count(), 0) << r.name;
    }
}

TEST(LessonMenu, ATvPlayLoadsItsTitleAndTheMenuKeepsItsStateWhileHidden) {
    MenuEnv env(3, 2);
    env.menu->Combo1->SetListIndex(80);
    EXPECT_EQ(env.rt->app.TextTitle, "The first episode");
    EXPECT_EQ(env.rt->app.TextLineCount, 1);

    env.menu->SetVisible(false); // another panel of the main screen is open
    env.menu->SetVisible(true);
    EXPECT_EQ(env.menu->Combo1->ListIndex(), 80);
    EXPECT_EQ(env.rt->app.OpenLesson, 81);
    EXPECT_EQ(colours(env.menu), "bbbbbbb");
    EXPECT_EQ(env.rt->forms.Get<Begin1>(), env.menu);

    // Advancing from the lesson of the position refreshes the task list.
    env.menu->Combo1->SetListIndex(2);
    env.rt->app.OpenTask = 2;
    ASSERT_TRUE(AdvanceStudy(*env.rt));
    EXPECT_EQ(colours(env.menu), "ggrbbbb");
    EXPECT_EQ(enabled(env.menu), "11100001");
}

TEST(LessonMenu, MouseMovesGoOnToTheMainScreen) {
    MenuEnv env(1, 1);
    env.begin->Move(1000, 500);
    env.menu->Move(1000 + 6472, 500 + 2220);
    QWidget* client = env.menu->Client();
    QMouseEvent move(QEvent::MouseMove, QPointF(10, 20), client->mapToGlobal(QPointF(10, 20)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(client, &move);
    ASSERT_EQ(env.begin->moves.size(), 1);
    EXPECT_EQ(env.begin->moves[0], QPoint(150 + 6472, 300 + 2220)); // in the main screen's twips
}

TEST(LessonMenu, EachTaskOpensItsStack) {
    fakeSizes() = {{"Text", {9000, 5000}},       {"ListeningTV", {8000, 6000}},
                   {"Typing", {7000, 4000}},     {"Vocabulary", {6000, 4500}},
                   {"Exercise3", {7500, 3500}},  {"FindSentence", {6500, 5500}},
                   {"Question", {7000, 3000}},   {"Newwords", {6000, 3000}},
                   {"Dictionary", {5000, 2000}}, {"Notepad", {4000, 1500}},
                   {"WordsPanel", {9000, 1200}}, {"Expressions_Related", {5000, 1800}},
                   {"Result1", {7500, 1000}}};
    // Places in twips on the 1024 x 768 screen (15360 x 11520), worked out by hand: the stack is
    // centred across and down (no gaps counted), raised by 260, and one pixel (15) apart.
    struct Row {
        const char* name;
        int button, lesson;
        QString main, notepad, below;
        bool clearsFeed;
        int left, mainTop, dictionaryTop, notepadTop, belowTop; // -1: no such form
    } rows[] = {
        {"task 1, read text", 0, 3, "Text", "Notepad", "WordsPanel", true, 3180, 4150, 2135, 620,
         9165},
        {"task 1, TV play", 0, 81, "ListeningTV", "Notepad", "WordsPanel", true, 3680, 3650, 1635,
         120, 9665},
        {"task 2", 1, 3, "Typing", "", "Expressions_Related", true, 4180, 3600, 1585, -1, 7615},
        {"task 3", 2, 3, "Vocabulary", "", "", true, 4680, 4250, 2235, -1, -1},
        {"task 4", 3, 3, "Exercise3", "", "Result1", false, 3930, 4250, 2235, -1, 7765},
        {"task 5", 4, 3, "FindSentence", "", "", false, 4430, 3750, 1735, -1, -1},
        {"task 6, read text", 5, 3, "Text", "", "Expressions_Related", true, 3180, 3100, 1085, -1,
         8115},
        {"task 6, TV play", 5, 81, "ListeningTV", "", "Expressions_Related", true, 3680, 2600, 585,
         -1, 8615},
        {"task 7", 6, 3, "Question", "", "", false, 4180, 5000, 2985, -1, -1},
        {"additional page", 7, 3, "Newwords", "", "Expressions_Related", true, 4680, 4100, 2085, -1,
         7115},
    };
    for (const Row& r : rows) {
        MenuEnv env(3, 1);
        registerTaskForms(*env.rt);
        env.menu->Combo1->SetListIndex(r.lesson - 1);
        env.menu->Command1[0]->setEnabled(true); // a lesson ahead opens task 1 only
        env.rt->app.DictionaryFeedsTask = true;
        env.menu->Command1[static_cast<size_t>(r.button)]->setEnabled(true);
        // Enter on a task's button opens it, as a click does.
        test::PressKey(env.menu->Command1[static_cast<size_t>(r.button)], Qt::Key_Return);

        AppState& app = env.rt->app;
        EXPECT_EQ(app.OpenTask, r.button + 1) << r.name;
        EXPECT_EQ(app.DictionaryFeedsTask, !r.clearsFeed) << r.name;
        EXPECT_FALSE(env.menu->Visible()) << r.name;
        EXPECT_FALSE(env.begin->Visible()) << r.name;

        Form* main = env.rt->forms.Find(r.main);
        Form* dict = env.rt->forms.Find("Dictionary");
        ASSERT_TRUE(main && dict) << r.name;
        EXPECT_EQ(main->Caption(), QStringLiteral("Lesson %1").arg(r.lesson)) << r.name;
        EXPECT_TRUE(main->Visible() && dict->Visible()) << r.name;
        Form* notepad = r.notepad.isEmpty() ? nullptr : env.rt->forms.Find(r.notepad);
        Form* below = r.below.isEmpty() ? nullptr : env.rt->forms.Find(r.below);
        EXPECT_EQ(!notepad, r.notepad.isEmpty()) << r.name;
        EXPECT_EQ(!below, r.below.isEmpty()) << r.name;
        // Only the task's own forms were loaded.
        EXPECT_EQ(env.rt->forms.All().size(), 4u + (notepad ? 1 : 0) + (below ? 1 : 0)) << r.name;

        EXPECT_EQ(main->Left(), r.left) << r.name;
        EXPECT_EQ(main->Top(), r.mainTop) << r.name;
        EXPECT_EQ(dict->Left(), r.left) << r.name;
        EXPECT_EQ(dict->Top(), r.dictionaryTop) << r.name;
        if (notepad) {
            EXPECT_EQ(notepad->Left(), r.left) << r.name;
            EXPECT_EQ(notepad->Top(), r.notepadTop) << r.name;
            EXPECT_EQ(notepad->Width(), main->Width()) << r.name;
        }
        if (below) {
            EXPECT_EQ(below->Left(), r.left) << r.name;
            EXPECT_EQ(below->Top(), r.belowTop) << r.name;
        }

        ShowMenuAgain(*env.rt); // as the task form does when it closes
        EXPECT_TRUE(env.menu->Visible() && env.begin->Visible()) << r.name;
    }
    fakeSizes().clear();
}

#include "menu_test.moc"
