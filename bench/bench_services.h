#pragma once
// What the benchmarks share: the program's services, real ones except the screen, on a data
// folder, and a steady clock.

#include "core/runtime.h"

#include <QString>
#include <chrono>
#include <memory>

namespace vt::bench {

struct Services {
    explicit Services(const QString& appPath) {
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

// A steady clock in milliseconds, with fractions.
inline double SteadyMs() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

} // namespace vt::bench
