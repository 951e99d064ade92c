#pragma once
// The program's services for a benchmark: real ones, except the screen, which is fixed, on a data
// folder the benchmark made.

#include "core/runtime.h"

#include <memory>

namespace vt::bench {

struct Services {
    explicit Services(const QString& appPath, int screenWidthPx = 1024, int screenHeightPx = 768)
        : screen(screenWidthPx, screenHeightPx) {
        rt = std::make_unique<Runtime>(time, boxes, random, files, screen);
        rt->app.AppPath = appPath;
    }
    QtTimeService time;
    ScriptedMessageBoxes boxes;
    ClockRandom random;
    FileStore files;
    FixedScreenInfo screen;
    std::unique_ptr<Runtime> rt;
};

} // namespace vt::bench
