// A middle button for devices without one (KIRVO_EMULATE_MIDDLE=1): pressing left and right together, within a short
// time, presses the middle button. It stays down while at least one of the two is held; the one that is let go
// meanwhile acts as itself when pressed again, so that middle with left and middle with right can be held too.
#pragma once

namespace gl {

class MiddleButton {
  public:
    // `report` receives what the program is to see: LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE and whether pressed.
    using Report = void (*)(int button, bool pressed);

    explicit MiddleButton(Report report) : Tell(report) {}

    // A button of the device changed. The first press of left or right is held back until it is clear what it means.
    void Change(int button, bool pressed, long long microseconds);
    // The pointer moved by more than a tremble, or time passed: a press that was held back may be due.
    void Moved();
    void Pass(long long microseconds);
    // Lets go of everything.
    void Reset();

    bool HoldsBack() const { return HeldBack != 0; }

  private:
    void TellHeldBack();

    Report Tell;
    int HeldBack = 0; // the button whose press waits
    long long HeldSince = 0;
    bool MiddleDown = false;

    // Left and right: pressed on the device; part of the middle button's chord.
    struct Side {
        bool Down = false, Swallowed = false;
    } Left, Right;

    Side& SideOf(int button);
};

} // namespace gl
