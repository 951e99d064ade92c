#include "shell/program.h"

#include "platform/application.h"
#include "platform/runtime.h"

namespace vt {

int RunProgram(Application& app) {
    QtTimeService time;
    QtMessageBoxes boxes;
    ClockRandom random;
    FileStore files;
    QtScreenInfo screen;
    Runtime rt(time, boxes, random, files, screen);
    rt.forms.OnLastUnloaded = [] { QCoreApplication::quit(); };
    return app.exec();
}

} // namespace vt
