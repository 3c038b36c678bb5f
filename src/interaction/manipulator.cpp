#include "interaction/manipulator.h"

#include "platform/events.h"

namespace {

void ButtonChanged(View* view, int& button, int other, int down, Manipulator& manipulator) {
    button = down;
    if (manipulator.Active) {
        if (!button && !other) {
            manipulator.Active = 0;
            manipulator.OnNone(view);
        }
    } else if (!down) {
        manipulator.OnNone(view);
    } else if (other) {
        manipulator.Active = 1;
        manipulator.OnBoth(view);
    } else {
        manipulator.OnSingle(view);
    }
}

} // namespace

void SetManipulator(Manipulator& manipulator, void (*onBoth)(View* view), void (*onNone)(View* view),
                    void (*onSingle)(View* view)) {
    manipulator = {0, 0, 0, onBoth, onNone, onSingle};
}

void UpdateManipulator(View* view, int device, short value, Manipulator& manipulator) {
    if (device == gl::LEFTMOUSE)
        ButtonChanged(view, manipulator.LeftDown, manipulator.RightDown, value != 0, manipulator);
    else if (device == gl::RIGHTMOUSE)
        ButtonChanged(view, manipulator.RightDown, manipulator.LeftDown, value != 0, manipulator);
}
