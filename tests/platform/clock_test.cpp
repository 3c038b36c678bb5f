#include "headless_screen.h"

#include "platform/framebuffer.h"
#include "platform/system.h"

using namespace gl;

namespace {

class VirtualTime : public HeadlessScreen {};

TEST_F(VirtualTime, StartsAtTheYear2000AndMovesOnlyByWaiting) {
    EXPECT_EQ(times(), 0);
    EXPECT_EQ(ClockSeconds(), 946'684'800);
    EXPECT_EQ(RandomSeed(), 946'684'800);
    sginap(250);
    EXPECT_EQ(times(), 250);
    EXPECT_EQ(ClockSeconds(), 946'684'802);
    for (int i = 0; i < 60; i++)
        gsync();
    EXPECT_EQ(times(), 350) << "sixty retraces are a second";
    for (int i = 0; i < 50; i++)
        qtest();
    EXPECT_EQ(times(), 350) << "asking takes no time";
}

TEST_F(VirtualTime, PollingForeverLetsTimePassAtLast) {
    long asked = 0;
    while (times() < 10 && asked < 100'000) {
        getbutton(LEFTMOUSE);
        asked++;
    }
    EXPECT_GE(times(), 10);
}

TEST_F(VirtualTime, TheIntervalTimerCountsPeriods) {
    StartIntervalTimer(10'000);
    EXPECT_EQ(IntervalTimerCount(), 0);
    sginap(7);
    EXPECT_EQ(IntervalTimerCount(), 7);
    StopIntervalTimer();
    sginap(7);
    EXPECT_EQ(IntervalTimerCount(), 7);
    StartIntervalTimer(20'000);
    sginap(7);
    EXPECT_EQ(IntervalTimerCount(), 3);
}

TEST_F(VirtualTime, SwappingTheSameWindowAgainTakesARetrace) {
    int windows[3];
    for (int& window : windows) {
        window = OpenAt("w", 10, 10, 50, 50);
        doublebuffer();
        gconfig();
    }
    for (int window : windows) {
        winset(window);
        swapbuffers();
    }
    EXPECT_EQ(times(), 0) << "several windows share one retrace";
    for (int i = 0; i < 60; i++)
        swapbuffers();
    EXPECT_EQ(times(), 100);
}

TEST_F(VirtualTime, TheBellIsHeard) {
    const long before = RingsHeard();
    ringbell();
    ringbell();
    EXPECT_EQ(RingsHeard(), before + 2);
}

} // namespace
