#include "program/program.h"

#include "core/runtime.h"
#include "core/speech.h"
#include "platform/application.h"
#include "program/form_registry.h"
#include "shell/start_or_not.h"

#include <QDir>

namespace vt {

int RunProgram(Application& app) {
    QtTimeService time;
    QtMessageBoxes boxes;
    ClockRandom random;
    FileStore files;
    QtScreenInfo screen;
    Runtime rt(time, boxes, random, files, screen);
    rt.ProgramFolder = QDir(QCoreApplication::applicationDirPath()).absolutePath() + u'/';
    rt.forms.OnLastUnloaded = [] { QCoreApplication::quit(); };
    RegisterProgramForms(rt.forms);
    // One sound device for the whole run, opened before the first form speaks.
    std::unique_ptr<SoundSystem> sound = SoundSystem::CreateForProgram(time);
    sound->Attach(rt);
    qInfo("Vantoria 2007: sound goes to %s", qPrintable(sound->OutputDescription()));
    app.setQuitOnLastWindowClosed(false);

    rt.forms.Load<StartOrNot>();
    if (rt.forms.All().empty()) return 0;
    const int code = app.exec();
    rt.forms.OnLastUnloaded = nullptr;
    rt.forms.DestroyAll(); // before the sound system their players stand on
    return code;
}

} // namespace vt
