#pragma once

#include "store/view_record.h"

// Turning, moving and enlarging views, with the middle button and with the wheel. Pixels are those of the current
// window, which shows the view; the pointer is in MouseX, MouseY.

/// Flag: the 3D view can be panned, zoomed and flown through, not only turned. Cleared by tools that set the eye's
/// distance.
extern int ZoomPanAllowed;

/// The drag of the middle button: turns, pans, zooms or resets the view, flies with Ctrl, and with Shift picks the
/// centre first. What comes out becomes the default of its kind.
void ManipulateView(View* view);

/// The wheel, in 120ths of a notch to the right and away from the user. Zooms about the pointer; with Shift pans, with
/// Ctrl turns the 3D view, what is seen following the fingers of a touchpad.
void TurnWheel(View* view, int turnX, int turnY);

/// Fits the view to the model; its rotation and its centre of rotation stay.
void ResetView(View* view);
