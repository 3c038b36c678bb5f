#pragma once

#include "platform/events.h"

// Loops in the midst of handling an event: drags, held buttons, menus. All of them read events through KeepQueueHappy,
// so redraws, close requests and modifier keys keep working meanwhile, and all end when the program or their window
// does.

/// Reads the waiting events: 1 when the button was released among them (or the loop must end, see ModalLoopMustEnd), 0
/// when the queue has run dry.
int ButtonReleased(int button);

/// Calls step(arg) at every retrace while the left button is down, the pointer having been read.
template <class Arg>
void ButtonRepeat(void (*step)(Arg), Arg arg);
/// The same, but calls step() once at least, so that no click on a gadget is too quick.
template <class Step>
void RepeatWhileHeld(Step step);

/// Before each step of such a loop: reads an event and the pointer, and waits for the retrace. 0 when the loop must
/// end.
int PrepareRepeat();
/// Non-zero while the left button is down.
int LeftButtonHeld();

/// Follows a button until it is released: at every clock tick calls step(), the pointer having been read. 1 when the
/// button was released, the pointer being where that happened; 0 when the loop had to end.
template <class Step>
int TrackButton(int button, Step step);
/// The same for the left button.
template <class Step>
int TrackLeftButton(Step step);

/// One step of such a loop: sleeps for a clock tick and reads the waiting events and the pointer. -1: the loop must
/// end; 0: the button is still down; 1: it has been released.
int TrackButtonStep(int button);

/// Waits until the left button is released: 1, or 0 when the loop had to end.
int WaitForLeftRelease();

/// The instants at which a held button acts: at once, after `first` clock ticks, then every `next`.
class RepeatClock {
  public:
    RepeatClock(int first, int next);
    /// 1 when it is time to act; the following instant is then counted from the one that was due.
    int Due();

  private:
    int First, Following;
    bool Started = false;
    long NextTime = 0;
};

/// For a press that may be the second of a double click. target(0) tells whether the press is on something else than
/// the last one; after the release target(1) acts on the click. 1 when this was the second click on the same thing of
/// the same window within less than 50 clock ticks.
int DoDoubleClick(int (*target)(int act));

/// Ticks of the clock, 1/100 s.
long ClockTicks();

template <class Step>
void RepeatWhileHeld(Step step) {
    do {
        if (!PrepareRepeat())
            return;
        step();
    } while (LeftButtonHeld());
}

template <class Arg>
void ButtonRepeat(void (*step)(Arg), Arg arg) {
    if (LeftButtonHeld())
        RepeatWhileHeld([&] { step(arg); });
}

template <class Step>
int TrackButton(int button, Step step) {
    for (;;) {
        int state = TrackButtonStep(button);
        if (state)
            return state > 0;
        step();
    }
}

template <class Step>
int TrackLeftButton(Step step) {
    return TrackButton(gl::LEFTMOUSE, step);
}
