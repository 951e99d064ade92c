// The timers under every form: a timer that is enabled again counts its interval afresh.
#include "platform/timers.h"

#include <gtest/gtest.h>

using namespace vt;

TEST(Timers, EnablingAgainRestartsTheCount) {
    VirtualClock clock;
    QObject owner;
    Timer* timer = clock.CreateTimer(&owner, "Timer1", 100, true);
    int ticks = 0;
    timer->OnTick = [&ticks] { ++ticks; };
    clock.Advance(60);
    timer->SetEnabled(true); // counts 100 ms from here
    clock.Advance(60);
    EXPECT_EQ(ticks, 0);
    clock.Advance(40);
    EXPECT_EQ(ticks, 1);
    // A new interval also counts from the change.
    clock.Advance(50);
    timer->SetInterval(100);
    clock.Advance(99);
    EXPECT_EQ(ticks, 1);
    clock.Advance(1);
    EXPECT_EQ(ticks, 2);
    // Disabled, it does not tick at all.
    timer->SetEnabled(false);
    clock.Advance(1000);
    EXPECT_EQ(ticks, 2);
}
