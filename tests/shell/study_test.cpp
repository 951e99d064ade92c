// The study position: moving on from a task, and keeping the place when the disk is full. (The
// task list by position is tested on the menu itself.)
#include "shell/study.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;
using vt::test::TestEnv;

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
        EXPECT_EQ(env.Read("Study.zvk"), r.moved ? PackInt16LE({static_cast<int16_t>(r.wantLesson),
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
    const QByteArray before = env.Read("Study.zvk");

    env.files.failWrites = true;
    app.OpenTask = 3;
    EXPECT_TRUE(AdvanceStudy(*env.rt));
    EXPECT_EQ(app.StudyTask, 4);
    EXPECT_EQ(env.Read("Study.zvk"), before); // the last good file stands whole
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_EQ(env.boxes.Last().flags, Mb::Exclamation);
}
