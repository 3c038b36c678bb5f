#include "gooey/pointer.h"

#include "gooey/event_loop.h"
#include "gooey/window.h"

#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <cmath>

int MouseX = 0, MouseY = 0;
int MouseABSX = 0, MouseABSY = 0;

namespace {

Window* MouseLockWindow = nullptr;

/// Keeps one coordinate of the pointer within [start, start + length).
void LockCoordinate(int valuator, int start, int length, int maximum, int& last) {
    int position = gl::getvaluator(valuator);
    if (position == -1)
        position = last;
    int locked = std::clamp(position, start, start + std::max(length, 1) - 1);
    if (locked != position) {
        gl::setvaluator(valuator, locked, 0, maximum);
        last = locked;
    }
}

} // namespace

void ReadMousePos() {
    MouseABSX = gl::getvaluator(gl::MOUSEX);
    MouseABSY = gl::getvaluator(gl::MOUSEY);
    int x = 0, y = 0;
    if (CurrentWindow)
        gl::getorigin(&x, &y);
    MouseX = MouseABSX - x;
    MouseY = MouseABSY - y;
}

int MouseInBox(int x, int y, int width, int height) {
    return x < MouseX && MouseX < x + width && y < MouseY && MouseY < y + height;
}

int MouseInCircle(double x, double y, double radius) {
    return std::hypot(MouseX - x, MouseY - y) < radius;
}

void WindowAroundMouse(int width, int height) {
    auto centre = [](int valuator, int length, int maximum) {
        int position = gl::getvaluator(valuator);
        if (position == -1)
            position = (maximum + 1) / 2;
        return std::max(0, std::min(position - length / 2, maximum - length));
    };
    int x = centre(gl::MOUSEX, width, hres);
    int y = centre(gl::MOUSEY, height, vres);
    gl::prefposition(x, x + width, y, y + height);
    // The gadgets of such windows do not follow their size.
    gl::minsize(width + 1, height + 1);
    gl::maxsize(width + 1, height + 1);
}

void LockMouseToWindow(Window* window) {
    MouseLockWindow = window;
}

void ClearWindowLock() {
    MouseLockWindow = nullptr;
}

void UpdateWindowLock() {
    if (!MouseLockWindow || LeftCtrl)
        return;
    LockCoordinate(gl::MOUSEX, MouseLockWindow->X, MouseLockWindow->Width, hres, MouseABSX);
    LockCoordinate(gl::MOUSEY, MouseLockWindow->Y, MouseLockWindow->Height, vres, MouseABSY);
}

void ForgetLockedWindow(const Window* window) {
    if (MouseLockWindow == window)
        MouseLockWindow = nullptr;
}
