#pragma once

#include "gooey/drag.h"
#include "store/view_record.h"

// Drags in the model views.

/// Flag: a drag is going on.
extern int Moving;
/// Flag: after this drag only the main window need be drawn again; cleared by StopMove.
extern int DontDirtyAfterMove;

/// Bracket a drag in the current window: busy status, double buffers. StopMove has all model windows drawn again.
void StartMove();
void StopMove();

/// During a drag with SingleWhenStill: gives the viewports other than the current one double buffers, once a drag,
/// until StopMove. For RedrawModelWindows.
void DoubleBufferOtherViewports();

/// A drag in the model views, bracketed by StartMove and StopMove; each step is shown in all of them, with FastUpdates
/// in the current one.
class ViewDrag : public Drag {
  public:
    explicit ViewDrag(View* view, int button = gl::LEFTMOUSE) : Drag(button), Dragged(view) {}

  protected:
    void Begin() override { StartMove(); }

    void End() override { StopMove(); }

    void Show() override;

    /// The view of the press; null in windows that have none.
    View* const Dragged;
};

/// The drag loop of the views: until `button` is released, passes every event to eventFn (may be null), calls moveFn
/// with the pointer read, and redraws the current window, which stays the same, whenever an event came, the pointer
/// moved or the view changed. Ends early when the program or the window is to be closed.
void UpdateWindow(View* view, int button, void (*moveFn)(View* view),
                  void (*eventFn)(View* view, int device, short value));
