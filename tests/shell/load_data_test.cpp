// The loading panel on a small course: what its bars show when it leaves, the greeting, and the
// hand-over to the main screen.

#include "core/runtime.h"
#include "core/script_file.h"
#include "shell/begin.h"
#include "shell/load_data.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace vt;
using vt::test::TestEnv;

namespace {

// The three bars as they stand when the panel goes.
struct Bars {
    int max[3] = {};
    int value[3] = {};
    bool seen = false;

    void captureOnUnload(Runtime& rt) {
        rt.forms.OnUnloaded = [this, &rt](const QString& name) {
            LoadData* form = rt.forms.Get<LoadData>();
            if (!form || name != LoadData::kName) return;
            seen = true;
            int i = 0;
            for (ProgressBar* bar : {form->ProgressBar2, form->ProgressBar3, form->ProgressBar4}) {
                max[i] = bar->Max();
                value[i] = bar->Value();
                ++i;
            }
        };
    }
};

void writeScript(TestEnv& env, const QString& rel, const QStringList& lines,
                 const QString& family) {
    env.WriteFile(rel, EncodeScriptLines(lines, family, 11));
}

TEST(LoadDataForm, FillsTheTablesShowsTheBarsGreetsAndHandsOverToTheMainScreen) {
    TestEnv env;
    Runtime& rt = *env.rt;
    writeScript(env, "Lessons\\Title.zvk", {"Hello", "Your name"}, "RT");
    for (int n : {1, 2, 5}) {
        const QString folder = QStringLiteral("Lessons\\Script\\Lesson_%1\\").arg(n);
        writeScript(env, folder + "icwp.zvk",
                    {"n.i3 h.ao3", "你好", "hello", "zh.ong1 g.uo2", "中国", "China"}, "RW");
        writeScript(env, folder + "lifr.zvk", {"Title", "你好！", "再见！"}, "RT");
    }
    writeScript(env, "Vocabulary\\ci1.zvk", {"sh.u1", "书", "book"}, "VO");

    Bars bars;
    bars.captureOnUnload(rt);

    Begin* begin = rt.forms.Load<Begin>();
    ASSERT_NE(begin, nullptr);
    env.clock.Advance(200);
    ASSERT_NE(rt.forms.Get<LoadData>(), nullptr);
    EXPECT_EQ(rt.app.WordCount, 0) << "nothing loads before the panel's own tick";
    env.clock.Advance(200);

    EXPECT_EQ(rt.forms.Get<LoadData>(), nullptr);
    ASSERT_TRUE(bars.seen);
    EXPECT_EQ(bars.max[0], 160);
    EXPECT_EQ(bars.value[0], 4);
    EXPECT_EQ(bars.max[1], 140);
    EXPECT_EQ(bars.value[1], 3);
    EXPECT_EQ(bars.max[2], 7);
    EXPECT_EQ(bars.value[2], 7);

    EXPECT_EQ(rt.app.TitleList[2], "Your name");
    EXPECT_EQ(rt.app.SentenceCount, 6);
    EXPECT_EQ(rt.app.CharCount, 5);
    EXPECT_EQ(env.boxes.Count(), 0);

    // The greeting is queued syllable by syllable, even with no sound system behind it.
    ASSERT_EQ(rt.app.SpeechSyllableCount, 8);
    EXPECT_EQ(rt.app.SpeechQueue[1].Sound, "huan1");
    EXPECT_EQ(rt.app.SpeechQueue[8].Sound, "ya3");

    EXPECT_TRUE(begin->Timer2->Enabled());
    rt.forms.Unload(begin);
}

// The sample course beside the program: the whole load runs without a message, every word file
// found moves the first bar, and the third bar ends full.
TEST(LoadDataForm, LoadsTheSampleCourseWithoutAWord) {
    TestEnv env;
    Runtime& rt = *env.rt;
    rt.app.AppPath = QStringLiteral(VANTORIA_APP_DIR "/");
    if (!env.files.Exists(rt.app.AppPath + "Lessons\\Title.zvk"))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    int wordFiles = 0;
    for (int n = 1; n <= 140; ++n)
        wordFiles += env.files.Exists(
            rt.app.AppPath + QStringLiteral("Lessons\\Script\\Lesson_%1\\icwp.zvk").arg(n));
    for (int n = 1; n <= 20; ++n)
        wordFiles +=
            env.files.Exists(rt.app.AppPath + QStringLiteral("Vocabulary\\ci%1.zvk").arg(n));

    Bars bars;
    bars.captureOnUnload(rt);
    Begin* begin = rt.forms.Load<Begin>();
    env.clock.Advance(400);
    ASSERT_EQ(rt.forms.Get<LoadData>(), nullptr);
    std::printf("sample course: bars %d/%d, %d/%d, %d/%d; %d words (%d from lessons), "
                "%d sentences, %d characters\n",
                bars.value[0], bars.max[0], bars.value[1], bars.max[1], bars.value[2], bars.max[2],
                rt.app.WordCount, rt.app.LessonWordCount, rt.app.SentenceCount, rt.app.CharCount);

    EXPECT_EQ(env.boxes.Count(), 0);
    EXPECT_EQ(bars.value[0], wordFiles == 144 ? 160 : wordFiles);
    EXPECT_GT(rt.app.CharCount, 0);
    EXPECT_EQ(bars.max[2], rt.app.WordCount);
    EXPECT_EQ(bars.value[2], rt.app.WordCount);
    EXPECT_EQ(rt.app.SpeechSyllableCount, 8);
    rt.forms.Unload(begin);
}

} // namespace
