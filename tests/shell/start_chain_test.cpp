// The start chain, stage by stage on the virtual clock, the main screen's buttons, and the way
// out.

#include "core/runtime.h"
#include "shell/about.h"
#include "shell/background.h"
#include "shell/begin.h"
#include "shell/begin1.h"
#include "shell/load_data.h"
#include "shell/start_or_not.h"
#include "shell/study_file.h"
#include "support/events.h"
#include "support/test_env.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace vt;
using vt::test::TestEnv;

namespace {

// The start form on a system whose text does not come through as Unicode.
class GarbledStart final : public StartOrNot {
    Q_OBJECT
public:
    using StartOrNot::StartOrNot;

protected:
    QString CheckText() const override { return QStringLiteral("x"); }
};

struct StartChain : ::testing::Test {
    TestEnv env;
    Runtime& rt = *env.rt;
    std::vector<QString> unloaded;
    bool ended = false;

    void SetUp() override {
        rt.forms.OnUnloaded = [this](const QString& n) { unloaded.push_back(n); };
        rt.forms.OnLastUnloaded = [this] { ended = true; };
    }

    // Runs the whole chain up to the lesson-menu stage.
    Begin* startToMenu() {
        rt.forms.Load<StartOrNot>();
        env.clock.Advance(100 + 200 + 200 + 200);
        return rt.forms.Get<Begin>();
    }
};

TEST_F(StartChain, RunsStageByStageInItsOrder) {
    rt.forms.Load<StartOrNot>();
    StartOrNot* start = rt.forms.Get<StartOrNot>();
    ASSERT_NE(start, nullptr);
    EXPECT_FALSE(start->Visible());
    ASSERT_NE(rt.forms.Get<Background>(), nullptr) << "the text check passes and loads the desktop";
    EXPECT_EQ(rt.forms.Get<Begin>(), nullptr);

    env.clock.Advance(99);
    EXPECT_EQ(rt.forms.Get<Begin>(), nullptr) << "the desktop's timer waits its 100 ms";
    env.clock.Advance(1);
    EXPECT_EQ(rt.forms.Get<StartOrNot>(), nullptr);
    Begin* begin = rt.forms.Get<Begin>();
    ASSERT_NE(begin, nullptr);
    EXPECT_TRUE(begin->Visible());
    EXPECT_EQ(begin->Left(), (rt.screen.Width() - begin->Width()) / 2);
    EXPECT_EQ(begin->Top(), (rt.screen.Height() - begin->Height()) / 2 - 260);
    EXPECT_TRUE(env.files.Exists(env.Path("Study.zvk"))) << "a first start creates the file";
    EXPECT_TRUE(env.files.Exists(env.Path("Setting.zvk")));
    EXPECT_EQ(rt.app.StudyLesson, 1);
    EXPECT_EQ(rt.app.StudyTask, 1);
    EXPECT_EQ(rt.forms.Get<LoadData>(), nullptr);

    env.clock.Advance(200);
    LoadData* loading = rt.forms.Get<LoadData>();
    ASSERT_NE(loading, nullptr);
    EXPECT_TRUE(loading->Visible());
    EXPECT_EQ(loading->Left(), begin->Left() + Begin::PanelLeft);
    EXPECT_EQ(loading->Top(), begin->Top() + Begin::PanelTop);

    env.clock.Advance(200);
    EXPECT_EQ(rt.forms.Get<LoadData>(), nullptr) << "loading unloads itself in its one tick";
    EXPECT_TRUE(begin->Timer2->Enabled());
    EXPECT_EQ(begin->SelectedIndex, 0);

    env.clock.Advance(200);
    EXPECT_FALSE(begin->Timer2->Enabled());
    EXPECT_EQ(begin->SelectedIndex, 1);
    EXPECT_EQ(begin->Image3[1]->PictureName, u"selected") << "selected without a click";
    EXPECT_EQ(unloaded, (std::vector<QString>{"StartOrNot", "LoadData"}));
}

// A FIFO where a record should be would hold the start for ever in its open; it reads as a
// missing record. What killed saves left behind goes at the start, and only that.
TEST_F(StartChain, OddRecordFilesAndLeftoversOfSavesDoNotStopTheStart) {
    for (const char* name : {"Study.zvk", "Setting.zvk"})
        ASSERT_EQ(::mkfifo(QFile::encodeName(env.Path(name)).constData(), 0600), 0) << name;
    env.WriteFile("Study.zvk.vtsave-k1LLed", "\5\0");
    env.WriteFile("Chat.txt.vtsave-000000", "half a chat");
    env.WriteFile("Lessons\\Title.zvk.vtsave-aBcDeF", "not in the program folder itself");

    rt.forms.Load<StartOrNot>();
    env.clock.Advance(100 + 200 + 200 + 200);
    ASSERT_NE(rt.forms.Get<Begin1>(), nullptr);
    EXPECT_TRUE(rt.forms.Get<Begin1>()->Visible()) << "the lesson menu stands";
    EXPECT_EQ(rt.app.StudyLesson, 1);
    EXPECT_EQ(rt.app.StudyTask, 1);
    EXPECT_EQ(QDir(rt.app.AppPath).entryList({"*.vtsave-*"}, QDir::Files), QStringList());
    EXPECT_TRUE(QFileInfo::exists(env.Path("Lessons/Title.zvk.vtsave-aBcDeF")));
}

TEST_F(StartChain, FailedTextCheckShowsTheWarningWithItsThreeSteps) {
    rt.forms.Load<GarbledStart>();
    StartOrNot* start = rt.forms.Get<StartOrNot>();
    ASSERT_NE(start, nullptr);
    EXPECT_TRUE(start->Visible());
    EXPECT_EQ(rt.forms.Get<Background>(), nullptr);
    EXPECT_EQ(start->Height(), 3000) << "only what stands above the step text shows";

    start->Command3->click();
    EXPECT_EQ(start->Height(), 8400);
    EXPECT_EQ(start->Top(), (rt.screen.Height() - 8400) / 2);
    EXPECT_FALSE(start->Command3->isVisibleTo(start));
    EXPECT_EQ(start->Label4->Caption(),
              u"Step 1: Open Control Panel and then open Regional and Language Options");
    start->Option3->click();
    EXPECT_EQ(start->Label4->Caption(),
              u"Step 3: Open tab Advanced, select Chinese (PRC) and apply the setting.");
    EXPECT_TRUE(start->Image3->isVisibleTo(start));
    EXPECT_FALSE(start->Image1->isVisibleTo(start));

    start->Command1->click();
    EXPECT_NE(rt.forms.Get<Background>(), nullptr) << "\"later\" goes on with the start";
}

TEST_F(StartChain, CancelLaunchingEndsTheProgram) {
    rt.forms.Load<GarbledStart>();
    rt.forms.Get<StartOrNot>()->Command2->click();
    EXPECT_TRUE(ended);
    EXPECT_TRUE(rt.forms.All().empty());
}

TEST_F(StartChain, ButtonsSelectHoverAndRestore) {
    Begin* begin = startToMenu();
    ASSERT_NE(begin, nullptr);

    for (const auto& row : rt.app.SpeechQueue)
        EXPECT_NE(row.Sound, u"ke4") << "the lesson button was selected, not clicked";

    // About opens in the panel area and its label is spoken; the lesson button goes neutral.
    vt::test::Click(begin->Image3[4]);
    ASSERT_EQ(rt.app.SpeechSyllableCount, 2);
    EXPECT_EQ(rt.app.SpeechQueue[1].Sound, u"guan1");
    EXPECT_EQ(rt.app.SpeechQueue[2].Sound, u"yu2");
    About* about = rt.forms.Get<About>();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->Visible());
    EXPECT_EQ(about->Left(), begin->Left() + Begin::PanelLeft);
    EXPECT_EQ(begin->SelectedIndex, 4);
    EXPECT_EQ(begin->Image3[1]->PictureName, u"neutral");
    EXPECT_EQ(begin->Image3[4]->PictureName, u"selected");
    EXPECT_TRUE(about->Label2[1]->Caption().startsWith(u"Version: "));

    // A click on the selected button does nothing at all.
    about->Move(0, 0);
    rt.app.SpeechQueue.Erase();
    vt::test::Click(begin->Image3[4]);
    EXPECT_EQ(about->Left(), 0);
    EXPECT_TRUE(rt.app.SpeechQueue.Empty()) << "and speaks nothing";

    // A button without its panel yet is selected and shows nothing; About is hidden, not gone.
    vt::test::Click(begin->Image3[2]);
    EXPECT_EQ(begin->SelectedIndex, 2);
    EXPECT_FALSE(about->Visible());
    EXPECT_EQ(rt.forms.Get<About>(), about);

    // Hover lights a button; moving onto the form puts it out.
    vt::test::MouseMoveOver(begin->Image3[3]);
    EXPECT_EQ(begin->HoverIndex, 3);
    EXPECT_EQ(begin->Image3[3]->PictureName, u"hover");
    vt::test::MouseMoveOver(begin->Client());
    EXPECT_EQ(begin->HoverIndex, 0);
    EXPECT_EQ(begin->Image3[3]->PictureName, u"neutral");

    // Over the selected button the picture stays selected, and leaving keeps HoverIndex.
    vt::test::MouseMoveOver(begin->Image3[2]);
    EXPECT_EQ(begin->Image3[2]->PictureName, u"selected");
    vt::test::MouseMoveOver(begin->Client());
    EXPECT_EQ(begin->HoverIndex, 2);
    EXPECT_EQ(begin->Image3[2]->PictureName, u"selected");

    // A panel forwards its mouse moves to the main screen.
    vt::test::MouseMoveOver(begin->Image3[5]);
    vt::test::Click(begin->Image3[4]);
    vt::test::MouseMoveOver(begin->Image3[1]);
    EXPECT_EQ(begin->Image3[1]->PictureName, u"hover");
    vt::test::MouseMoveOver(about->Client());
    EXPECT_EQ(begin->Image3[1]->PictureName, u"neutral");
}

TEST_F(StartChain, EscapeLeavesInTheExitOrder) {
    Begin* begin = startToMenu();
    ASSERT_NE(begin, nullptr);
    vt::test::Click(begin->Image3[4]);
    unloaded.clear();
    vt::test::PressKey(begin->Client(), Qt::Key_Escape);
    EXPECT_TRUE(rt.app.ExitRequested);
    // The zoom window and the dictionary stand from the start and go first.
    ASSERT_GE(unloaded.size(), 4u);
    EXPECT_EQ(std::vector<QString>(unloaded.begin(), unloaded.begin() + 4),
              (std::vector<QString>{"Zoom", "Dictionary", "Background", "Begin"}));
    EXPECT_TRUE(ended) << "no form remains";
    EXPECT_TRUE(rt.forms.All().empty());
}

struct StudyRow {
    const char* name;
    QByteArray bytes; // empty with missing = true: no file
    bool missing;
    int lesson, task;
};

TEST(StudyFile, ZeroCasesAndBadFiles) {
    const StudyRow rows[] = {
        {"missing file is a first start", {}, true, 1, 1},
        {"empty file", QByteArray(), false, 1, 1},
        {"zeros", QByteArray(4, '\0'), false, 1, 1},
        {"zero lesson keeps a task", QByteArray("\0\0\5\0", 4), false, 1, 5},
        {"lesson with zero task stays", QByteArray("\3\0\0\0", 4), false, 3, 0},
        {"truncated to one field", QByteArray("\7\0", 2), false, 7, 0},
        {"truncated to one byte", QByteArray("\x8C", 1), false, 140, 0},
        {"longer file reads record 1", QByteArray("\x0C\0\3\0garbage-after", 17), false, 12, 3},
        {"negative lesson as stored", QByteArray("\xFF\xFF\2\0", 4), false, -1, 2},
    };
    for (const auto& r : rows) {
        TestEnv env;
        if (!r.missing) env.WriteFile("Study.zvk", r.bytes);
        LoadStudyPosition(*env.rt);
        EXPECT_EQ(env.rt->app.StudyLesson, r.lesson) << r.name;
        EXPECT_EQ(env.rt->app.StudyTask, r.task) << r.name;
        EXPECT_TRUE(env.files.Exists(env.Path("Study.zvk"))) << r.name;
    }
}

} // namespace

#include "start_chain_test.moc"
