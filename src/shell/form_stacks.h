#pragma once
// The stacks of forms that the menus open. A task of the lesson menu (Begin1) stands on the
// desktop as one column: Notepad (task 1 only) on top, then Dictionary, the task's main form, and
// the form below it where the task has one. An assistant of the assistants menu (Begin4) stands
// below Dictionary; the writing pad has its samples beside it.
//
// The menus know these forms by name only: each is loaded through the runtime's registry of
// forms (Forms::LoadByName), which the program fills with every form it has. A task whose main
// form is not there leaves the menu as it is; a missing companion is left out of the stack.

#include "shell/study.h"

#include <array>

namespace vt {

struct Runtime;

// The form that stands above the main form of every task and of every assistant.
inline constexpr char kDictionary[] = "Dictionary";

// The forms of one task's stack, by name.
struct TaskStackRow {
    int openTask = 0;              // 1..7, 8 for the additional page
    const char* main = nullptr;    // the main form for a read text
    const char* mainTv = nullptr;  // the main form for a TV play (same as main when no other)
    const char* notepad = nullptr; // the form above Dictionary, or null
    const char* below = nullptr;   // the form below the main form, or null
    bool clearsDictionaryFeed = false;
};

// The rows of buttons 0..7 of the lesson menu (tasks 1..7, then the additional page).
const std::array<TaskStackRow, kAdditionalPage + 1>& TaskStacks();
// The row of a button; an index outside 0..7 gives the nearest row.
const TaskStackRow& TaskStackFor(int buttonIndex);

// One row of the assistants menu, top to bottom.
struct AssistantRow {
    const char* button = nullptr; // the row's button on the menu: "Command7"
    const char* label = nullptr;  // its label's caption
    const char* form = nullptr;   // the assistant form it opens
    const char* beside = nullptr; // a second form standing to its right, or null
    int openTask = 0;             // what OpenTask becomes: 11..17
};
const std::array<AssistantRow, 7>& AssistantRows();

// The place of each form of a task's stack on the desktop, in twips. All share the main form's
// Left; the forms stand one above the other one pixel apart.
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

// Runs the opening routine of button buttonIndex (0..6 for tasks 1..7, 7 for the additional page)
// for OpenLesson: the task's forms are loaded, stacked and shown, and the main screen and the
// lesson menu step aside. Returns false when the task's main form is not in the program (then
// nothing changes) or gave up in its own load handler.
bool OpenTaskStack(Runtime& rt, int buttonIndex);

// The way back, for a task form that closes: the main screen and the lesson menu are shown again
// as they were left (the task form unloads its own companions).
void ShowMenuAgain(Runtime& rt);
// The lesson menu's button of the study task takes the focus, when it can.
void FocusStudyTask(Runtime& rt);

} // namespace vt
