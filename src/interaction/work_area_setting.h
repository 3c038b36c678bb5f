#pragma once

#include "store/view_record.h"

// Setting the work area: a click on the model is the middle of the cube, and a circle drawn from there its size.

/// Asks for it in the views: Escape or the menu of the right button gives up. Nothing while it is being set already.
void DoWorkArea();
/// Ends that mode; nothing when it is not on.
void EndSettingWorkArea();

/// The press of the left button in the view that the current window shows: one of the model views or the work area's
/// own, where only the two coordinates that it shows are taken. A circle of 4 pixels or less changes nothing. Opens the
/// work area's window.
void PickWorkArea(View* view);
