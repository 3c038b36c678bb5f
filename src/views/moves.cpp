#include "views/moves.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/system.h"
#include "views/display_flags.h"
#include "views/status_line.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <cstring>

int Moving;
int DontDirtyAfterMove;

namespace {

/// In this move the other viewports are still single-buffered; they were switched to double buffering.
int OthersAreSingle, OthersWereSwitched;

void SetBuffersOf(Window* window, void (*make)()) {
    if (!window)
        return;
    WindowScope scope(window);
    make();
}

/// The dragged window, and the viewport that follows a drag in the work area's window.
void SetBuffersOfMove(void (*makeCurrent)(), void (*makeViewport)()) {
    makeCurrent();
    if (CurrentWindow && CurrentWindow == WorkAreaWindow && !FastUpdates)
        SetBuffersOf(Viewport[0], makeViewport);
}

/// One run of UpdateWindow.
class WindowDrag {
  public:
    WindowDrag(::View* view, int button, void (*eventFn)(::View*, int, short))
        : Target(CurrentWindow),
          View(view),
          Button(button),
          EventFn(eventFn) {}

    /// Handles the waiting events. False at the end of the drag.
    bool TakeEvents() {
        for (;;) {
            int device = 0;
            short value = 0;
            const int state = KeepQueueHappy(device, value);
            if (state < 0 || ModalLoopMustEnd() || !WindowIsOpen(Target))
                return false;
            if (state == 0)
                return true;
            if (device == Button && value == 0)
                return false;
            Changed = true;
            if (!EventFn)
                continue;
            WindowScope scope(Target);
            ReadMousePos();
            EventFn(View, device, value);
        }
    }

    void Move(void (*moveFn)(::View*)) {
        WindowScope scope(Target);
        ReadMousePos();
        if (MouseX != LastX || MouseY != LastY)
            Changed = true;
        LastX = MouseX;
        LastY = MouseY;
        if (moveFn)
            moveFn(View);
        if (!Changed && !ViewChanged()) {
            gl::sginap(1);
            return;
        }
        RedrawCurrentWindow();
        Changed = false;
        if (View)
            Shown = *View;
    }

  private:
    bool ViewChanged() const { return View && std::memcmp(&Shown, View, sizeof Shown) != 0; }

    Window* Target;
    ::View* View;
    int Button;
    void (*EventFn)(::View*, int, short);
    bool Changed = true;
    int LastX = 0, LastY = 0;
    ::View Shown = {};
};

} // namespace

void StartMove() {
    Moving = 1;
    if (SingleWhenStill)
        SetBuffersOfMove(MakeDoubleBuffer, MakeDoubleBuffer);
    BusyStatus();
    OthersAreSingle = 1;
    OthersWereSwitched = 0;
}

void StopMove() {
    if (SingleWhenStill)
        SetBuffersOfMove(OthersWereSwitched ? ConfigureBuffers : MakeSingleBuffer, MakeSingleBuffer);
    Moving = 0;
    if (DontDirtyAfterMove)
        DirtyWindow(MainWindow);
    else
        DirtyModelWindows();
    DontDirtyAfterMove = 0;
}

void DoubleBufferOtherViewports() {
    if (!SingleWhenStill || !OthersAreSingle)
        return;
    for (Window* window : Viewport)
        if (window != CurrentWindow)
            SetBuffersOf(window, MakeDoubleBuffer);
    OthersAreSingle = 0;
    OthersWereSwitched = 1;
}

void ViewDrag::Show() {
    RedrawModelWindows();
}

void UpdateWindow(View* view, int button, void (*moveFn)(View* view),
                  void (*eventFn)(View* view, int device, short value)) {
    StartMove();
    WindowDrag drag(view, button, eventFn);
    while (drag.TakeEvents())
        drag.Move(moveFn);
    StopMove();
    DirtyCurrentWindow();
}
