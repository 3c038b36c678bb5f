#include "platform/middle_button.h"

#include "platform/events.h"

namespace gl {

namespace {

constexpr long long TogetherMicroseconds = 80'000;

} // namespace

MiddleButton::Side& MiddleButton::SideOf(int button) {
    return button == LEFTMOUSE ? Left : Right;
}

void MiddleButton::TellHeldBack() {
    if (HeldBack == 0)
        return;
    const int button = HeldBack;
    HeldBack = 0;
    Tell(button, true);
}

void MiddleButton::Change(int button, bool pressed, long long microseconds) {
    if (button != LEFTMOUSE && button != RIGHTMOUSE) {
        TellHeldBack();
        Tell(button, pressed);
        return;
    }
    Pass(microseconds);
    Side& side = SideOf(button);
    side.Down = pressed;
    if (pressed) {
        const bool otherDown = (button == LEFTMOUSE ? Right : Left).Down;
        if (HeldBack != 0 && HeldBack != button) {
            HeldBack = 0;
            MiddleDown = Left.Swallowed = Right.Swallowed = true;
            Tell(MIDDLEMOUSE, true);
        } else if (MiddleDown || otherDown) {
            Tell(button, true);
        } else {
            HeldBack = button;
            HeldSince = microseconds;
        }
        return;
    }
    if (HeldBack == button)
        TellHeldBack();
    if (side.Swallowed)
        side.Swallowed = false;
    else
        Tell(button, false);
    if (MiddleDown && !Left.Down && !Right.Down) {
        MiddleDown = false;
        Tell(MIDDLEMOUSE, false);
    }
}

void MiddleButton::Moved() {
    TellHeldBack();
}

void MiddleButton::Pass(long long microseconds) {
    if (microseconds - HeldSince >= TogetherMicroseconds)
        TellHeldBack();
}

void MiddleButton::Reset() {
    *this = MiddleButton(Tell);
}

} // namespace gl
