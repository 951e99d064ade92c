// The study position and the lesson it opens: moving on, the loading of a lesson's words and
// text, and the arithmetic of a task's stack of forms. (The task list by position is tested on the
// menu itself.)
#include "core/script_file.h"
#include "shell/study.h"
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

QByteArray studyFile(TestEnv& env) {
    return env.files.ReadAll(env.Path(QStringLiteral("Study.zvk"))).value_or(QByteArray());
}

} // namespace

TEST(Study, AdvanceMovesOnlyFromThePositionAndStoresEachStep) {
    struct Row {
        const char* name;
        int openLesson, openTask, lesson, task;
        int wantLesson, wantTask;
        bool moved;
        int boxes;
    } rows[] = {
        {"within a lesson", 3, 2, 3, 2, 3, 3, true, 0},
        {"after task 7 the next lesson", 5, 7, 5, 7, 6, 1, true, 0},
        {"after lesson 140, lesson 141", 140, 7, 140, 7, 141, 1, true, 1},
        {"a lesson ahead moves nothing", 9, 1, 5, 3, 5, 3, false, 0},
        {"old ground moves nothing", 3, 3, 5, 3, 5, 3, false, 0},
    };
    for (const Row& r : rows) {
        TestEnv env;
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(r.openLesson);
        app.OpenTask = static_cast<int16_t>(r.openTask);
        app.StudyLesson = static_cast<int16_t>(r.lesson);
        app.StudyTask = static_cast<int16_t>(r.task);

        EXPECT_EQ(AdvanceStudy(*env.rt), r.moved) << r.name;
        EXPECT_EQ(app.StudyLesson, r.wantLesson) << r.name;
        EXPECT_EQ(app.StudyTask, r.wantTask) << r.name;
        EXPECT_EQ(studyFile(env), r.moved ? PackInt16LE({static_cast<int16_t>(r.wantLesson),
                                                         static_cast<int16_t>(r.wantTask)})
                                          : QByteArray())
            << r.name;
        ASSERT_EQ(env.boxes.Count(), r.boxes) << r.name;
        if (r.boxes) {
            EXPECT_EQ(env.boxes.Last().text,
                      "Congratulations! You have finished studying all the 140 lessons.");
            EXPECT_EQ(env.boxes.Last().title, "Notice");
            EXPECT_EQ(env.boxes.Last().flags, Mb::Information);
        }
    }
}

TEST(Study, AdvanceOnAFullDiskWarnsAndKeepsThePlaceInMemory) {
    TestEnv env;
    AppState& app = env.rt->app;
    app.OpenLesson = app.StudyLesson = 4;
    app.OpenTask = app.StudyTask = 2;
    ASSERT_TRUE(AdvanceStudy(*env.rt));
    const QByteArray before = studyFile(env);

    env.files.failWrites = true;
    app.OpenTask = 3;
    EXPECT_TRUE(AdvanceStudy(*env.rt));
    EXPECT_EQ(app.StudyTask, 4);
    EXPECT_EQ(studyFile(env), before); // the last good file stands whole
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_EQ(env.boxes.Last().flags, Mb::Exclamation);
}

TEST(Study, LessonScriptsGiveWordsTextAndTitle) {
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

TEST(Study, ALessonWithoutFilesLeavesNoTextAndNoStaleWords) {
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

TEST(Study, StackOfATaskIsCentredAndOnePixelApart) {
    // 1024 x 768 pixels; the whole stack 9700 twips high (no gaps counted).
    StackHeights h;
    h.screenWidth = 15360;
    h.screenHeight = 11520;
    h.mainWidth = 6000;
    h.mainHeight = 5000;
    h.dictionaryHeight = 2000;
    h.notepadHeight = 1500;
    h.belowHeight = 1200;
    const StackLayout task1 = ComputeStack(h);
    EXPECT_EQ(task1, (StackLayout{4680, 910 + 3500 - 260, 4150 - 2015, 2135 - 1515, 4150 + 5015}));

    // Halves go to the even number: 3519 / 2 and 3521 / 2 both give 1760.
    struct Row {
        const char* name;
        int notepad, below, mainTop;
    } rows[] = {
        {"Dictionary only", 0, 0, (11520 - 7000) / 2 + 2000 - 260},
        {"half below an even number", 0, 1001, 1760 + 2000 - 260},
        {"half above an even number", 0, 999, 1760 + 2000 - 260},
    };
    for (const Row& r : rows) {
        h.notepadHeight = r.notepad;
        h.belowHeight = r.below;
        const StackLayout s = ComputeStack(h);
        EXPECT_EQ(s.mainTop, r.mainTop) << r.name;
        EXPECT_EQ(s.dictionaryTop, r.mainTop - 2000 - 15) << r.name;
        EXPECT_EQ(s.belowTop, r.mainTop + 5000 + 15) << r.name;
    }
}
