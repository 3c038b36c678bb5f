#pragma once

#include "store/records.h"

/// Cuts the selected polygons, with their sub-polygons, along the plane of the view's grid. Afterwards the parts before
/// the plane are selected, and share no vertex with what lies behind it. Tells when none is selected; takes the undo
/// snapshot first.
void SlicePolygons(View* view);
