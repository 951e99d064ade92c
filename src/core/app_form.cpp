#include "core/app_form.h"

#include "core/runtime.h"

namespace vt {

AppForm::AppForm(Runtime& runtime, const char* name, Border border)
    : Form(runtime.forms, QString::fromLatin1(name), border), rt(runtime) {}

} // namespace vt
