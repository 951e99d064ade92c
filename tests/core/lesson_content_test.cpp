// The open lesson's words and text as the tasks read them: the word groups, the text lines
// without the empty ones, the title of a read text and of a TV play, and a lesson without files.
#include "core/lesson_content.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;
using vt::test::TestEnv;

namespace {

void writeLesson(TestEnv& env, int lesson, const QStringList& words, const QStringList& text) {
    const QString folder = QStringLiteral("Lessons\\Script\\Lesson_%1\\").arg(lesson);
    ASSERT_TRUE(WriteScriptFile(env.files, env.Path(folder + "icwp.zvk"), words, "RW", 7));
    ASSERT_TRUE(WriteScriptFile(env.files, env.Path(folder + "lifr.zvk"), text, "RT", 8));
}

} // namespace

TEST(LessonContent, LessonScriptsGiveWordsTextAndTitle) {
    const QStringList words = {"  n.i3 h.ao3 ", "你好",  " hello ", "x.ie4 x.ie5", "谢谢",
                               "thank you",     "z.ai4", "再"}; // 8 lines: the last group is cut
    struct Row {
        const char* name;
        int lesson;
        QStringList text;
        QString title;
        QStringList lines;
    } rows[] = {
        {"read text: title is its first line",
         3,
         {"3", "我是学生。", "", "你是老师吗？", "", "", "不是。"},
         "我是学生。",
         {"我是学生。", "你是老师吗？", "不是。"}},
        {"TV play: title apart from the lines",
         81,
         {"81", "第一集 新邻居", "", "A：你好！", "B：你好！", ""},
         "第一集 新邻居",
         {"A：你好！", "B：你好！"}},
        {"blank lines are kept, only empty ones go",
         4,
         {"4", "题目", "  ", "句子"},
         "题目",
         {"题目", "  ", "句子"}},
    };
    for (const Row& r : rows) {
        TestEnv env;
        writeLesson(env, r.lesson, words, r.text);
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(r.lesson);
        LoadLessonScripts(*env.rt);

        ASSERT_EQ(app.LessonWordRows, 2) << r.name;
        ASSERT_EQ(app.LessonWords.Count(), 2) << r.name;
        EXPECT_EQ(app.LessonWords[1].Pinyin, "n.i3 h.ao3") << r.name;
        EXPECT_EQ(app.LessonWords[1].Chinese, "你好") << r.name;
        EXPECT_EQ(app.LessonWords[1].Meaning, "hello") << r.name;
        EXPECT_EQ(app.LessonWords[2].Meaning, "thank you") << r.name;
        EXPECT_EQ(app.TextTitle, r.title) << r.name;
        EXPECT_EQ(app.TextLineCount, r.lines.size()) << r.name;
        EXPECT_EQ(QStringList(app.TextLines.Items().begin(), app.TextLines.Items().end()), r.lines)
            << r.name;
        EXPECT_EQ(env.boxes.Count(), 0) << r.name;
    }
}

TEST(LessonContent, ALessonWithoutFilesLeavesNoTextAndNoStaleWords) {
    TestEnv env;
    AppState& app = env.rt->app;
    writeLesson(env, 2, {"w.o3", "我", "I", "n.i3", "你", "you"}, {"2", "标题", "一句"});
    app.OpenLesson = 2;
    LoadLessonScripts(*env.rt);
    ASSERT_EQ(app.LessonWordRows, 2);

    app.OpenLesson = 5; // nothing on disk
    LoadLessonScripts(*env.rt);
    EXPECT_EQ(app.TextLineCount, 0);
    EXPECT_EQ(app.TextLines.Count(), 0);
    // The count stands as it was, but none of the old words are left behind it.
    ASSERT_EQ(app.LessonWords.Count(), app.LessonWordRows);
    for (const LessonWord& w : app.LessonWords)
        EXPECT_TRUE(w.Chinese.isEmpty() && w.Meaning.isEmpty() && w.Pinyin.isEmpty());
}
