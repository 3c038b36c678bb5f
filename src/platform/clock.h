// The clock behind times, ClockSeconds, timers and sleeping: real, or virtual where it only moves when told to.
#pragma once

namespace gl {

// Starts the virtual clock at 1 January 2000 00:00:00 UTC, or goes over to the real one.
void UseVirtualClock(bool virtualTime);
bool ClockIsVirtual();
// Microseconds: of the virtual clock since its start, of the real one from an arbitrary start, never going back.
long long ClockMicroseconds();
// Moves the virtual clock on; nothing on the real one.
void AdvanceClock(long long microseconds);
// The moment of the next vertical retrace, 60 a second.
long long NextRetrace();

constexpr long long TickMicroseconds = 10'000;

} // namespace gl
