#pragma once

#include "store/view_record.h"

// The window of the work area: the cube from the top or the front, where it is moved and its size changed. The work
// area is in force exactly while it is open (views/work_area.h).

/// Opens the window, or raises it.
void OpenWorkAreaGizmo();

/// The view that the window shows, computed for its present size; overwritten by the next call.
View* WorkAreaView();

/// The work area keeps within sizes that views can be magnified to; `radius` is that of what is shown, metres.
void SetWorkAreaSize(WorkAreaRecord& area, double halfSize, double radius);
/// Every 3D view turns about the cube.
void TurnViewsAboutWorkArea();

/// The window's last bottom-left corner and size, screen pixels, and a flag: there is one. Kept with the defaults.
extern int WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH, WorkAreaOpened;
