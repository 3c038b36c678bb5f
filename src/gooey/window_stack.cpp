#include "gooey/window_stack.h"

#include "gooey/misuse.h"
#include "gooey/window.h"

#include "platform/windows.h"

namespace {

constexpr int MaxStackedWindows = 32;
Window* WindowStack[MaxStackedWindows];
int WindowStackDepth = 0;

} // namespace

void SetWindow(Window* window) {
    CurrentWindow = window;
    gl::winset(window && window->Gid > 0 && window->Gid <= MaxWindow ? window->Gid : 0);
}

void PushWindow() {
    if (WindowStackDepth == MaxStackedWindows)
        EndForMisuse("Window stack overflow!\a\n");
    WindowStack[WindowStackDepth++] = CurrentWindow;
}

void PushToWindow(Window* window) {
    PushWindow();
    SetWindow(window);
}

void PopWindow() {
    if (WindowStackDepth == 0)
        EndForMisuse("Window stack underflow!\a\n");
    SetWindow(WindowStack[--WindowStackDepth]);
}

void WindowCall(const WindowCallback& callback) {
    WindowScope scope(callback.Target);
    callback.Function();
}

void ForgetStackedWindow(const Window* window) {
    for (int i = 0; i < WindowStackDepth; ++i)
        if (WindowStack[i] == window)
            WindowStack[i] = nullptr;
}
