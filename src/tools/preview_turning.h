#pragma once

#include "geometry/matrices.h"
#include "gooey/gadget_kind.h"

// A model that is turned in an area of a window. Its matrix goes from model space to a space with z up and y away from
// the eye; the y of its last row is the viewing distance.

inline constexpr double LeastPreviewDistance = 0.01;

/// Follows the middle button until it is released: turns the model; with the left button pans, with the right one
/// zooms, with both calls reset(). Near the rim of the area it rolls. `show()` is called at each step.
void ManipulateMatrix(Matrix& matrix, const GadgetBox& area, void (*reset)(), void (*show)());
