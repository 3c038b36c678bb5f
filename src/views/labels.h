#pragma once

#include "store/view_record.h"

#include <cstdint>

// Texts and axes over a view.

/// A text beside a point (eye space), on a screened box; nothing when the point lies behind the eye or left of or below
/// the view. Leaves the view's matrices loaded.
void LabelPoint(View* view, const float* eyePoint, const char* text);

/// With WindowLabels set: the name of what is shown, the view's direction and its axes. `background` 0x00BBGGRR.
void LabelWindow(View* view, std::uint32_t background, const char* name);

/// The axes of the 3D view, in a corner of 100 x 100 pixels.
void Draw3dAxis(View* view, std::uint32_t background);
/// The axes of a 2D view, there: the horizontal one to the right (1) or to the left (0), the vertical one down (1) or
/// up (0), each with its letter at the tip.
void Draw2dAxis(std::uint32_t background, int toTheRight, char horizontalLetter, int verticalDown, char verticalLetter);

/// Calls function(size of a pixel) with matrices in which (0, 0, 0) is the model point (3 doubles) and x and y run
/// along the screen, in eye units. The size is negative in the 3D view (eye depths are), positive in 2D views.
void DrawDeRotated(View* view, const double* point, void (*function)(double pixel));
