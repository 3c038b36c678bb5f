#pragma once

#include "store/records.h"

// Strips of quadrilaterals that follow each other over opposite edges, as textures are run along them. A strip is the
// object's selected polygons in strip order, while LastSelectionWasQstrip is set; the Mark of the first tells by which
// corner it is entered.

/// A click on the polygon (may be null) with Shift and Ctrl: selects it when nothing is selected, else the strip from
/// the one selected quadrilateral to it, or from the present strip's first. Repeated, it tries the next edge of the
/// first. Tells the user what is missing; rings the bell when there is no strip.
void SelectQstrip(Polygon* clicked);

/// Walks the strip: function(b0, b1, b2, b3, argument) with the corners of each quadrilateral in strip order, entered
/// between the first two and left between the last two.
void FeedBackQstrip(void (*function)(PolygonBead*, PolygonBead*, PolygonBead*, PolygonBead*, void*), void* argument);
