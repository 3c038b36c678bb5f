#include "gooey/drag.h"

#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/system.h"

void Drag::Show() {
    RedrawCurrentWindow();
}

bool Drag::Event(int, short) {
    return true;
}

bool Drag::Ends(int device, short value) {
    return device == Button && value == 0;
}

Drag::State Drag::TakeEvents(Window* target, bool& happened) {
    for (;;) {
        int device = 0;
        short value = 0;
        const int state = KeepQueueHappy(device, value);
        if (state < 0 || ModalLoopMustEnd() || !WindowIsOpen(target))
            return State::Ended;
        if (state == 0)
            return State::Goes;
        WindowScope scope(target);
        ReadMousePos();
        if (Ends(device, value))
            return State::Ended;
        if (device == gl::KEYBD && value == EscapeCharacter && Cancel())
            return State::Cancelled;
        happened = true;
        if (!Event(device, value))
            return State::Ended;
    }
}

bool Drag::Run() {
    Window* const target = CurrentWindow;
    Begin();
    bool happened = true;
    int lastX = 0, lastY = 0;
    State state;
    while ((state = TakeEvents(target, happened)) == State::Goes) {
        WindowScope scope(target);
        ReadMousePos();
        happened = happened || MouseX != lastX || MouseY != lastY;
        if ((happened || Animated()) && Step())
            Show();
        else
            gl::sginap(1);
        happened = false;
        lastX = MouseX;
        lastY = MouseY;
    }
    if (WindowIsOpen(target)) {
        WindowScope scope(target);
        // The release has brought the pointer up to date: a drag quicker than a frame counts whole.
        if (state == State::Ended) {
            ReadMousePos();
            Step();
            Commit();
        }
        End();
    } else {
        if (state == State::Ended)
            Commit();
        End();
    }
    return state == State::Ended;
}
