#pragma once

#include "files/format.h"
#include "files/reader.h"
#include "geometry/matrices.h"

#include <utility>

// Before NewAxesVersion files had y pointing up and z towards the eye.

inline bool HasOldAxes() {
    return FileVersion < NewAxesVersion;
}

/// Turns a vector of an old file: (x, y, z) becomes (x, -z, y).
template <class Scalar>
void TurnOldAxes(Scalar* vector) {
    const Scalar y = vector[1];
    vector[1] = -vector[2];
    vector[2] = y;
}

/// Turns a matrix of an old file: from turned to turned vectors instead of from old to old ones.
inline void TurnOldAxes(Matrix& matrix) {
    for (int row = 0; row < 4; ++row)
        TurnOldAxes(matrix[row]);
    for (int column = 0; column < 3; ++column) {
        const double row1 = matrix[1][column];
        matrix[1][column] = -matrix[2][column];
        matrix[2][column] = row1;
    }
}
