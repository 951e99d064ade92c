#pragma once
// The learner's place on the course path (140 lessons of seven tasks) and the rules that follow
// from it, without any widget: how the task list of the lesson menu is coloured and enabled, which
// button gets the focus, how the position moves on when a task is done, how a lesson's words and
// text are loaded, and how a task's forms are stacked on the desktop.
//
// The lesson menu (Begin1) shows what these functions decide; the task forms call AdvanceStudy.

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
// learner is warned and the position stays in memory. The lesson menu's task list is refreshed.
// Returns false when nothing moved (a task done away from the position).
bool AdvanceStudy(Runtime& rt);

// Refreshes the colours and enabled states of the lesson menu's task list, when the menu is
// loaded. (It lives with the menu.)
void UpdateTaskList(Runtime& rt);

// Fills LessonWords/LessonWordRows, TextLines/TextLineCount and TextTitle for OpenLesson from the
// lesson's word file and text file. A text file that cannot be read leaves no text lines; a word
// file that gives no lines leaves the row count as it was. Empty text lines are left out.
void LoadLessonScripts(Runtime& rt);

// The place of each form of a task's stack on the desktop, in twips. All share the main form's
// Left; the forms stand one above the other one pixel apart: Notepad (task 1 only) on top, then
// Dictionary, the main form, and the form below it where the task has one.
struct StackHeights {
    int screenWidth = 0;
    int screenHeight = 0;
    int pixel = 15; // twips per pixel, vertically
    int mainWidth = 0;
    int mainHeight = 0;
    int dictionaryHeight = 0; // 0 when the stack has no Dictionary
    int notepadHeight = 0;    // 0 when the stack has no Notepad
    int belowHeight = 0;      // 0 when the stack has no form below
};

struct StackLayout {
    int left = 0;
    int mainTop = 0;
    int dictionaryTop = 0;
    int notepadTop = 0;
    int belowTop = 0;
    bool operator==(const StackLayout&) const = default;
};

// The main form is centred across; down, the whole stack is centred (gaps not counted) and then
// raised by 260 twips, the same lift as the main screen's.
StackLayout ComputeStack(const StackHeights& h);

// The forms of one task's stack, by name. Dictionary always stands above the main form.
struct TaskStackRow {
    int openTask = 0;              // 1..7, 8 for the additional page
    const char* main = nullptr;    // the main form for a read text
    const char* mainTv = nullptr;  // the main form for a TV play (same as main when no other)
    const char* notepad = nullptr; // the form above Dictionary, or null
    const char* below = nullptr;   // the form below the main form, or null
    bool clearsDictionaryFeed = false;
};

// The row for button index 0..7 (task 1..7, then the additional page).
const TaskStackRow& TaskStackFor(int buttonIndex);

} // namespace vt
