#pragma once
// The forms that the menus open by their names: every one the program has is registered with
// the runtime's forms here, and every one it does not have yet stands on one list, which shrinks
// as the forms arrive. A test holds the two together: each form a task stack, an assistant row
// or a sound owner tag names is registered or still to build, never both.

#include <QStringList>

namespace vt {

class AppForms;

// Registers each form of the program that is opened by name.
void RegisterProgramForms(AppForms& forms);

// The names of the forms still to build.
const QStringList& FormsStillToBuild();

} // namespace vt
