#pragma once

#include "store/records.h"

#include <vector>

// The selection of polygons and the tree of their sub-polygons.

/// Selects every sub-polygon, at any depth, of the selected polygons.
void SelectAllUnselectedChildren();
/// Selects every polygon that a selected one lies on, then as above.
void SelectAllUnselectedParents();

/// 1 when `other` lies anywhere in the polygon's tree of sub-polygons.
int IsSubPolygonOf(const Polygon* polygon, const Polygon* other);
/// 1 when no polygon that this one lies on, at any depth, is selected.
int NoParentSelected(const Polygon* polygon);

/// Hangs the polygon, with its own sub-polygons, on another one (of which it is no ancestor), or, with a null parent,
/// makes it a top-level one in the selected sub-object.
void MovePolygon(Polygon* polygon, Polygon* parent);

/// The selected polygons of the current object, which is cleaned up, for loops that change their lists.
std::vector<Polygon*> SelectedPolygons();
