#pragma once

#include "geometry/matrices.h"

// Rotations that bring a direction onto a coordinate axis.

/// Sets m to a rotation that turns v onto the positive coordinate axis of its largest component and returns that axis:
/// 0 x, 1 y, 2 z. Of equal components the later axis is taken.
int RotateToAxis(const double* v, Matrix& m);

/// Sets m to a rotation that turns v onto the positive x axis: RotateToAxis, then a turn from that axis to x. A vector
/// with its largest component along negative x is turned half round in addition.
void RotateToXAxis(const double* v, Matrix& m);
