#include "shell/study.h"

#include "core/runtime.h"
#include "shell/study_file.h"

#include <algorithm>

namespace vt {

std::array<TaskRowState, kTaskCount> TaskListState(int openLesson, int studyLesson, int studyTask) {
    std::array<TaskRowState, kTaskCount> rows{};
    for (int i = 0; i < kTaskCount; ++i) {
        TaskRowState& row = rows[static_cast<size_t>(i)];
        const int task = i + 1;
        if (openLesson < studyLesson) {
            row = {kTaskDone, true};
        } else if (openLesson == studyLesson) {
            if (task < studyTask)
                row = {kTaskDone, true};
            else if (task == studyTask)
                row = {kTaskCurrent, true};
            else
                row = {kTaskAhead, false};
        } else {
            // A lesson ahead of the position may always be started with its first task.
            row = {kTaskAhead, task == 1};
        }
    }
    return rows;
}

int FocusTarget(int openLesson, int studyLesson, int studyTask) {
    if (openLesson != studyLesson) return kAdditionalPage;
    if (studyTask < 1 || studyTask > kTaskCount) return -1;
    return studyTask - 1;
}

int MenuIndexForPosition(int studyLesson) {
    return std::clamp(studyLesson, 1, kLessonCount) - 1;
}

bool AtStudyPosition(const AppState& app) {
    return app.OpenLesson == app.StudyLesson && app.OpenTask == app.StudyTask;
}

bool AdvanceStudy(Runtime& rt) {
    AppState& app = rt.app;
    if (!AtStudyPosition(app)) return false;
    bool finishedCourse = false;
    ++app.StudyTask;
    if (app.StudyTask > kTaskCount) {
        // The last lesson is not treated apart: the position goes on to lesson 141.
        finishedCourse = app.StudyLesson == kLessonCount;
        app.StudyTask = 1;
        ++app.StudyLesson;
    }
    // Stored before any box waits for the learner, so that no step is lost meanwhile.
    const bool saved = SaveStudyPosition(rt);
    if (finishedCourse)
        rt.MsgBox(
            QStringLiteral("Congratulations! You have finished studying all the 140 lessons."),
            Mb::Information, QStringLiteral("Notice"));
    if (!saved)
        rt.MsgBox(QStringLiteral("Your progress could not be saved in Study.zvk; the disk may be "
                                 "full or write-protected. The program keeps your place (lesson "
                                 "%1, task %2) until it is closed.")
                      .arg(app.StudyLesson)
                      .arg(app.StudyTask),
                  Mb::Exclamation, QStringLiteral("Warning"));
    UpdateTaskList(rt);
    return true;
}

void UpdateTaskList(Runtime& rt) {
    if (rt.UpdateTaskList) rt.UpdateTaskList();
}

} // namespace vt
