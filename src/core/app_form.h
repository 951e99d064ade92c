#pragma once
// A form of the program: a form of the runtime that is handed the Runtime, through which it
// reaches the program-wide record, the other forms and every service.

#include "platform/form.h"

namespace vt {

struct Runtime;

class AppForm : public Form {
    Q_OBJECT
public:
    // name: the form's name, its kName.
    AppForm(Runtime& rt, const char* name, Border border = Border::Caption);

    Runtime& rt;
};

} // namespace vt
