#pragma once
// What the benchmarks share: a steady clock, and the program's services, real ones except the
// screen, which is fixed, on a data folder the benchmark made.

#include "core/runtime.h"

#include <chrono>
#include <memory>

namespace vt::bench {

// A steady clock in milliseconds, for timing a step.
inline double NowMs() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

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
