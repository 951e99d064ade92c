#include "shell/task_forms.h"

#include "core/runtime.h"
#include "shell/study.h"

namespace vt {

FormLoaders DefaultTaskFormLoaders() {
    FormLoaders loaders;
    // Each task form and companion is added here as it comes: AddLoader<Typing>(loaders); ...
    return loaders;
}

namespace {

// The loaded form of that name, loading it through its loader when needed; null when the form
// does not exist in the program (or its load handler gave up).
Form* loadByName(Runtime& rt, const FormLoaders& loaders, const char* name) {
    if (!name) return nullptr;
    const QString key = QString::fromLatin1(name);
    if (Form* f = rt.forms.Find(key)) return f;
    auto it = loaders.find(key);
    if (it == loaders.end() || !it->second) return nullptr;
    return it->second(rt);
}

void place(Form* f, int left, int top, Form* owner) {
    if (!f) return;
    f->Move(left, top);
    f->Show(owner);
}

} // namespace

bool OpenTaskStack(Runtime& rt, const FormLoaders& loaders, int buttonIndex) {
    if (buttonIndex < 0 || buttonIndex > kAdditionalPage) return false;
    AppState& app = rt.app;
    const TaskStackRow& row = TaskStackFor(buttonIndex);
    const char* mainName = IsPlayLesson(app.OpenLesson) ? row.mainTv : row.main;
    const QString mainKey = QString::fromLatin1(mainName);
    if (!rt.forms.Find(mainKey) && !loaders.count(mainKey)) return false;

    // The task forms read what is open while they load.
    app.OpenTask = static_cast<int16_t>(row.openTask);
    if (row.clearsDictionaryFeed) app.DictionaryFeedsTask = false;

    Form* mainForm = loadByName(rt, loaders, mainName);
    if (!mainForm) return false;
    Form* dictionary = loadByName(rt, loaders, "Dictionary");
    Form* notepad = loadByName(rt, loaders, row.notepad);
    Form* below = loadByName(rt, loaders, row.below);
    // A load handler may have unloaded the main form's companions (or the main form) again.
    if (!rt.forms.Find(mainKey)) return false;

    mainForm->SetCaption(QStringLiteral("Lesson %1").arg(app.OpenLesson));

    StackHeights h;
    h.screenWidth = rt.screen.Width();
    h.screenHeight = rt.screen.Height();
    h.pixel = rt.screen.TwipsPerPixelY();
    h.mainWidth = mainForm->Width();
    h.mainHeight = mainForm->Height();
    h.dictionaryHeight = dictionary ? dictionary->Height() : 0;
    h.notepadHeight = notepad ? notepad->Height() : 0;
    h.belowHeight = below ? below->Height() : 0;
    const StackLayout s = ComputeStack(h);

    Form* desktop = rt.forms.Find(QStringLiteral("Background"));
    place(mainForm, s.left, s.mainTop, desktop);
    place(dictionary, s.left, s.dictionaryTop, desktop);
    if (notepad) {
        notepad->Move(s.left, s.notepadTop, mainForm->Width(), notepad->Height());
        notepad->Show(desktop);
    }
    place(below, s.left, s.belowTop, desktop);
    mainForm->SetFocus();

    if (Form* menu = rt.forms.Find(QStringLiteral("Begin1"))) menu->SetVisible(false);
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin"))) begin->SetVisible(false);
    return true;
}

void ShowMenuAgain(Runtime& rt) {
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin"))) begin->SetVisible(true);
    if (Form* menu = rt.forms.Find(QStringLiteral("Begin1"))) menu->SetVisible(true);
}

} // namespace vt
