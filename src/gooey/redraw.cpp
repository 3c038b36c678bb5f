#include "gooey/redraw.h"

#include "gooey/draw.h"
#include "gooey/event_queue.h"
#include "gooey/gadget.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "platform/drawing.h"
#include "platform/framebuffer.h"

void RedrawWindow(Window* window) {
    if (!window || window->Closing)
        return;
    WindowScope scope(window);
    UpdateWindowGeometry();
    VanillaView();
    if (window->DrawFn)
        window->DrawFn();
    else if (window->Gadgets)
        DrawGooeyWindow();
    window->Dirty = 0;
    window->Resized = 0;
}

void RedrawCurrentWindow() {
    RedrawWindow(CurrentWindow);
}

void DirtyWindow(Window* window) {
    if (!window || window->Dirty)
        return;
    window->Dirty = 1;
    QueueEvent(GOOEY_DIRTY, 0);
}

void DirtyCurrentWindow() {
    DirtyWindow(CurrentWindow);
}

void DirtyAllWindows() {
    for (Window* window = WindowList; window; window = window->Next)
        window->Dirty = 1;
    QueueEvent(GOOEY_DIRTY, 0);
}

void RedrawDirtyWindows() {
    // Drawing one window may make another dirty, as views do with the status line: that one need not wait for the next
    // pass.
    for (int round = 0; round < 2; ++round)
        for (Window* window = WindowList; window; window = window->Next)
            if (window->Dirty)
                RedrawWindow(window);
}

void DrawGooeyWindow() {
    GooeyDraw(CurrentWindow->Gadgets);
    if (CurrentWindow->Flags & WindowDoubleBuffered)
        gl::swapbuffers();
}

void ClearWindow() {
    gl::cpack(BackgroundOf(CurrentWindow));
    gl::clear();
}
