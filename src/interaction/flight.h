#pragma once

#include "store/view_record.h"

// Flying through the 3D view: the eye moves on while the middle button is held, steered by the pointer's offset from
// the window's middle; left and right button change the speed.

/// Flies until the middle button is released.
void Fly(View* view);
void StopFlying();

/// The heads-up display of the view that is flown: position, heading, pitch and speed. An overlay of the views.
void DrawHUD(View* view);
