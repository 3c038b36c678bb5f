#include "gooey/modal.h"

#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "platform/events.h"
#include "platform/system.h"

namespace {

constexpr long DoubleClickTicks = 50;

enum class Waited { NothingLeft, Released, MustEnd };

/// Reads the waiting events up to the release of the button.
Waited ReadUntilRelease(int button) {
    // The state of the button runs ahead of its events: it is asked for first, so that a release which has been read
    // somewhere else already ends the wait instead of never coming.
    bool held = gl::getbutton(button);
    int device;
    short value;
    while (int state = KeepQueueHappy(device, value)) {
        if (state < 0)
            return Waited::MustEnd;
        if (device == button && value == 0)
            return Waited::Released;
    }
    if (ModalLoopMustEnd())
        return Waited::MustEnd;
    return held ? Waited::NothingLeft : Waited::Released;
}

} // namespace

int ButtonReleased(int button) {
    static int lastX = -1, lastY = -1;
    int x = gl::getvaluator(gl::MOUSEX), y = gl::getvaluator(gl::MOUSEY);
    int device;
    short value;
    auto released = [&] {
        while (int state = KeepQueueHappy(device, value))
            if (state < 0 || (device == button && value == 0))
                return true;
        return ModalLoopMustEnd() != 0;
    };
    if (released())
        return 1;
    // A drag has nothing to do while the pointer rests: let time pass rather than spin.
    if (x == lastX && y == lastY) {
        gl::sginap(1);
        if (released())
            return 1;
    }
    lastX = x;
    lastY = y;
    return 0;
}

int LeftButtonHeld() {
    return gl::getbutton(gl::LEFTMOUSE);
}

int PrepareRepeat() {
    int device;
    short value;
    if (KeepQueueHappy(device, value) < 0 || ModalLoopMustEnd())
        return 0;
    ReadMousePos();
    gl::gsync();
    return 1;
}

int TrackButtonStep(int button) {
    gl::sginap(1);
    switch (ReadUntilRelease(button)) {
    case Waited::Released:
        return 1;
    case Waited::MustEnd:
        return -1;
    case Waited::NothingLeft:
        break;
    }
    ReadMousePos();
    return 0;
}

int WaitForLeftRelease() {
    return TrackLeftButton([] {});
}

RepeatClock::RepeatClock(int first, int next) : First(first), Following(next) {}

int RepeatClock::Due() {
    long now = ClockTicks();
    if (Started && now < NextTime)
        return 0;
    long due = Started ? NextTime : now;
    NextTime = due + (Started ? Following : First);
    // A slow callback or a pause outside the button must not be made up for by a burst.
    if (NextTime <= now)
        NextTime = now + Following;
    Started = true;
    return 1;
}

long ClockTicks() {
    return gl::times();
}

int DoDoubleClick(int (*target)(int act)) {
    static bool clickPending = false;
    static long firstClick = 0;
    static int lastWindow = 0;

    long now = ClockTicks();
    Window* window = CurrentWindow;
    int gid = window ? window->Gid : 0;
    if (target(0) || gid != lastWindow)
        clickPending = false;
    lastWindow = gid;
    if (!WaitForLeftRelease())
        return 0;
    {
        WindowScope scope(window);
        target(1);
    }
    if (clickPending && now - firstClick < DoubleClickTicks) {
        clickPending = false;
        return 1;
    }
    clickPending = true;
    firstClick = now;
    return 0;
}
