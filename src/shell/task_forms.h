#pragma once
// Opening a task from the lesson menu: the forms of the task are loaded by name, stacked on the
// desktop (Notepad, Dictionary, the main form, the form below) and shown, and the main screen and
// the lesson menu step aside.
//
// The menu knows the task forms only by name, through a table of loaders. A form joins the table
// in DefaultTaskFormLoaders once it exists; until a task's main form is there, its button leaves
// the menu as it is. A missing companion (Dictionary, Notepad, the form below) is left out of the
// stack.

#include "core/runtime.h"

#include <QString>
#include <functional>
#include <map>

namespace vt {

using FormLoader = std::function<Form*(Runtime&)>;
using FormLoaders = std::map<QString, FormLoader>;

// The loader of form class F: loads it once and returns the instance (null when its load handler
// unloaded it again).
template <class F> FormLoader LoaderOf() {
    return [](Runtime& rt) -> Form* { return rt.forms.Load<F>(); };
}
template <class F> void AddLoader(FormLoaders& loaders) {
    loaders[QString::fromLatin1(F::kName)] = LoaderOf<F>();
}

// The task forms of the program, by name.
FormLoaders DefaultTaskFormLoaders();

// Runs the opening routine of button buttonIndex (0..6 for tasks 1..7, 7 for the additional page)
// for OpenLesson. Returns false when the task's main form is not in the program (then nothing
// changes) or gave up in its own load handler.
bool OpenTaskStack(Runtime& rt, const FormLoaders& loaders, int buttonIndex);

// The way back, for a task form that closes: the main screen and the lesson menu are shown again
// as they were left (the task form unloads its own companions).
void ShowMenuAgain(Runtime& rt);

} // namespace vt
