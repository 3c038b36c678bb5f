#pragma once

#include <limits>

// Axis-parallel boxes, each given by its lowest and its highest corner, 3 doubles each.

/// A box that holds no point and takes on the first one it is grown by.
inline void EmptyBox(double* min, double* max) {
    for (int axis = 0; axis < 3; ++axis) {
        min[axis] = std::numeric_limits<double>::infinity();
        max[axis] = -std::numeric_limits<double>::infinity();
    }
}

/// Enlarges a box so that it holds the point. Coordinates that are not numbers are ignored.
inline void GrowBox(double* min, double* max, const double* point) {
    for (int axis = 0; axis < 3; ++axis) {
        if (point[axis] < min[axis])
            min[axis] = point[axis];
        if (point[axis] > max[axis])
            max[axis] = point[axis];
    }
}
