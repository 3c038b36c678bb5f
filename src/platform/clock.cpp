#include "platform/clock.h"

#include "platform/system.h"

#include <chrono>
#include <ctime>

namespace gl {

namespace {

constexpr long long VirtualStartSeconds = 946'684'800; // 1 January 2000 00:00:00 UTC
constexpr long long SecondMicroseconds = 1'000'000;
constexpr long long RetracesPerSecond = 60;

bool Virtual = false;
long long VirtualNow = 0;

struct IntervalTimer {
    long long Period = 0; // microseconds; 0: stopped
    long long Start = 0;
    long Count = 0; // when stopped
};

IntervalTimer Timer;

} // namespace

void UseVirtualClock(bool virtualTime) {
    Virtual = virtualTime;
    VirtualNow = 0;
    Timer = {};
}

bool ClockIsVirtual() {
    return Virtual;
}

long long ClockMicroseconds() {
    if (Virtual)
        return VirtualNow;
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

void AdvanceClock(long long microseconds) {
    if (Virtual && microseconds > 0)
        VirtualNow += microseconds;
}

long long NextRetrace() {
    const long long retraces = ClockMicroseconds() * RetracesPerSecond / SecondMicroseconds;
    // Rounded up, so that the moment itself counts as past the retrace.
    return ((retraces + 1) * SecondMicroseconds + RetracesPerSecond - 1) / RetracesPerSecond;
}

long times() {
    return static_cast<long>(ClockMicroseconds() / TickMicroseconds);
}

long long ClockSeconds() {
    return Virtual ? VirtualStartSeconds + VirtualNow / SecondMicroseconds : static_cast<long long>(std::time(nullptr));
}

long RandomSeed() {
    return static_cast<long>(ClockSeconds());
}

void StartIntervalTimer(long microseconds) {
    Timer = {microseconds > 0 ? microseconds : 1, ClockMicroseconds(), 0};
}

void StopIntervalTimer() {
    Timer.Count = IntervalTimerCount();
    Timer.Period = 0;
}

long IntervalTimerCount() {
    if (Timer.Period == 0)
        return Timer.Count;
    return static_cast<long>((ClockMicroseconds() - Timer.Start) / Timer.Period);
}

} // namespace gl
