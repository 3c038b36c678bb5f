#pragma once

#include "store/view_record.h"

// Commands that change views and how they are shown.

/// Copies the default view of a direction (0 to 5, or Direction3D) into the view, which the current window shows.
void SetDefaultView(View* view, int direction);
/// The default 3D view; a view that is one already is turned upright.
void Show3dView(View* view);

/// Fits the view, which the current window shows, to the model, wherever that lies. What comes out becomes the default
/// of its kind.
void FitView(View* view);

/// With three viewports exchanges the large view with the one of the current window, or with the upper small one when
/// that is the large one.
void SwapLargeView();

/// One viewport, or three. The single one shows the view of the current window.
void ToggleThreeViews();

/// Toggle a display flag; the first redraws the model views.
void ToggleShown(int& flag);
void Toggle(int& flag);
/// SingleWhenStill.
void ToggleSingleBuffer();
