#pragma once

#include "store/records.h"

// Selecting what hangs together with a polygon, within the selected level of detail.

/// Applies the rule of the modifier keys to every polygon that can be reached from this one over shared vertices.
void SelectConnectedRegion(Polygon* polygon);
/// The same over polygons that are shaded alike: of the same lighting and, when that is smooth, the same light group.
void SelectSmoothingRegion(Polygon* polygon);
