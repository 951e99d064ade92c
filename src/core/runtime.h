#pragma once
// What every form is handed: the program-wide record, the forms, and the services of the
// platform. The program builds it from the real services; tests build it from the virtual
// clock, scripted message boxes, a seeded random generator and a fixed screen.
//
// Besides the services it holds the hooks through which a routine reaches a form that may not
// be there: each is empty until its form fills it in, and emptied again when that form goes.

#include "core/app_state.h"
#include "platform/files.h"
#include "platform/forms.h"
#include "platform/message_box.h"
#include "platform/random.h"
#include "platform/screen.h"
#include "platform/timers.h"

#include <functional>

namespace vt {

class SoundSystem;
class SelectableText;
struct Runtime;

// The forms of the program: the runtime's registry of forms, which builds each form with the
// Runtime it is handed.
class AppForms final : public Forms {
public:
    explicit AppForms(Runtime& rt) : rt_(rt) {}

    // Loads form class F (see Forms::Load).
    template <class F> F* Load() { return Forms::Load<F>(rt_); }

    // Registers F under its name, so that a menu can open it by name (see Forms::LoadByName).
    using Forms::Register;
    template <class F> void Register() {
        Register(QString::fromLatin1(F::kName), [this]() -> Form* { return Load<F>(); });
    }

private:
    Runtime& rt_;
};

struct Runtime {
    Runtime(TimeService& t, MessageBoxes& b, Random& r, FileStore& f, ScreenInfo& s)
        : time(t), boxes(b), random(r), files(f), screen(s), forms(*this) {}
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    AppState app;
    // The folder of the executable with a trailing separator: the desktop makes it AppPath.
    QString ProgramFolder;
    TimeService& time;
    MessageBoxes& boxes;
    Random& random;
    FileStore& files;
    ScreenInfo& screen;
    // The sound system (engine, shared players, owner dispatch); set up by the program or by a
    // test before any sound is played. See core/speech.h.
    SoundSystem* sound = nullptr;

    // The desktop's tone marker, once the desktop stands: shows the tone of the syllable just
    // started ("0" to "4").
    std::function<void(const QString& tone)> ShowToneCurve;
    // The lesson menu's task list, once the menu stands: colours and enables the tasks again by
    // the study position (see UpdateTaskList in shell/study.h).
    std::function<void()> UpdateTaskList;
    // The look-up on a selection that every text box of the kit makes (AppForm::AddTextBox and
    // AddTextArea): the mouse goes down on a box, and comes up at x, y twips inside it. The zoom
    // window and the dictionary fill these in once they stand; until then a selection looks nothing
    // up.
    std::function<void(SelectableText& box)> SelectionStarts;
    std::function<void(SelectableText& box, int x, int y)> SelectionMade;

    // Last, so that forms destroyed with the runtime still find everything above.
    AppForms forms;

    // Shorthand for the service calls that the forms make all the time.
    int MsgBox(const QString& text, int flags = Mb::OKOnly, const QString& title = {}) {
        return boxes.MsgBox(text, flags, title);
    }
    Timer* NewTimer(QObject* parent, const QString& name, int intervalMs, bool enabled = false) {
        return time.CreateTimer(parent, name, intervalMs, enabled);
    }
};

} // namespace vt
