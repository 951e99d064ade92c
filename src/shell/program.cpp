#include "shell/program.h"

#include "platform/application.h"
#include "platform/runtime.h"
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
    app.setQuitOnLastWindowClosed(false);

    rt.forms.Load<StartOrNot>();
    if (rt.forms.All().empty()) return 0;
    const int code = app.exec();
    return code;
}

} // namespace vt
