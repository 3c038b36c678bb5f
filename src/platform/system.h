// Time, sleeping, the bell and the machine. On the headless display time is virtual: it starts at 1 January 2000
// 00:00:00 UTC and advances only by what the program waits for; nothing ever really sleeps.
#pragma once

namespace gl {

// Sleeps for ticks of 1/100 s; what was drawn is presented first and input goes on being taken in. A sleep of one tick
// is a courtesy of polling loops: it ends early when an event arrives, and lasts a little longer on an idle desktop.
// Longer sleeps last their time.
void sginap(long ticks);
// Presents what was drawn and waits for the next vertical retrace, 60 a second.
void gsync();
// For work that takes long and can be cancelled, called again and again: now and then presents what was drawn and takes
// in input. Where time is virtual a tick passes each time. Of a script only what is meant for work under way goes on:
// `wait`, and after it `key`, `snapshot` and `echo`.
void BreatheAtWork();

// The clock in ticks of 1/100 s, from an arbitrary start, never going back.
long times();
// The calendar's clock in seconds since 1 January 1970 UTC.
long long ClockSeconds();
// What to seed random generators with: the calendar's seconds, so that a script's run repeats itself.
long RandomSeed();

// An interval timer that only counts: how often `microseconds` have passed since StartIntervalTimer. It needs no
// signal, stops with StopIntervalTimer (the count stays) and starts at 0 again.
void StartIntervalTimer(long microseconds);
void StopIntervalTimer();
long IntervalTimerCount();

// The bell: the terminal's on a desktop, a mark in RingsHeard without one.
void ringbell();
// How often the bell rang since the display was started.
long RingsHeard();

// A number that stays the same for this machine (32 bits, not negative); 0 on the headless display.
long sysid();

} // namespace gl
