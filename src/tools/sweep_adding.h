#pragma once

#include "geometry/matrices.h"

struct Sweep;

/// Adds the surface of a sweep, transformed by `matrix` unless that is null, to the current object, in the current
/// material, with its caps; the undo snapshot is taken first. Nothing happens without a mesh. In scene mode, and where
/// no polygons can be made, the user is told. 1 when it was added.
int AddSweepToModel(Sweep& sweep, const Matrix* matrix);
