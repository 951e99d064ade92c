#pragma once
// The learner's place on the course path (140 lessons of seven tasks) and the rules that follow
// from it, without any widget: how the task list of the lesson menu is coloured and enabled, which
// button gets the focus, and how the position moves on when a task is done.
//
// The lesson menu (Begin1) shows what these functions decide; the task forms call AdvanceStudy.
// The position is kept in Study.zvk (shell/study_file.h).

#include "core/course_shape.h"

#include <QString>
#include <array>
#include <cstdint>

namespace vt {

struct AppState;
struct Runtime;

// The button of the additional page (new words and phrases) in the task list.
constexpr int kAdditionalPage = 7;

// Text colours of the task list, in the course's blue-green-red order.
constexpr unsigned kTaskDone = 0x808080;    // grey
constexpr unsigned kTaskCurrent = 0x0000FF; // red
constexpr unsigned kTaskAhead = 0x000000;   // black

// Colour and enabled state of one task's label and button.
struct TaskRowState {
    unsigned color = kTaskAhead;
    bool enabled = false;
    bool operator==(const TaskRowState&) const = default;
};

// The seven task rows (index 0 is task 1) for the lesson shown against the study position.
// A lesson before the position: all done and open. The same lesson: done tasks grey, the current
// one red, the rest black and closed. A lesson ahead: only its task 1 can be opened.
std::array<TaskRowState, kTaskCount> TaskListState(int openLesson, int studyLesson, int studyTask);

// The button (0..7) that gets the focus when a lesson is chosen: the current task in the lesson
// of the study position, else the additional page. -1 when the stored task is outside 1..7 and no
// button fits.
int FocusTarget(int openLesson, int studyLesson, int studyTask);

// The lesson menu's row (0..139) that shows the study position. A position past the last lesson
// (the learner has finished the course, lesson 141) shows the last lesson, which then lies before
// the position: every task grey and open. A position below lesson 1 shows lesson 1.
int MenuIndexForPosition(int studyLesson);

// True when a task done now is the one at the study position, so that it moves the position.
bool AtStudyPosition(const AppState& app);

// Moves the study position on by one task when the open lesson and task are the study position;
// after task 7 comes task 1 of the next lesson, and finishing lesson 140 is congratulated and
// leads to lesson 141. The position is stored in Study.zvk at once; when it cannot be written the
// learner is warned and the position stays in memory. The lesson menu's task list is refreshed
// (UpdateTaskList).
// Returns false when nothing moved (a task done away from the position).
bool AdvanceStudy(Runtime& rt);

// Refreshes the colours and enabled states of the lesson menu's task list, through the hook the
// menu leaves in the runtime while it stands (Runtime::UpdateTaskList); nothing without a menu.
void UpdateTaskList(Runtime& rt);

} // namespace vt
