#pragma once

#include "store/records.h"

#include <vector>

// What the tools that raise new geometry to a height have in common: the ruler, the option "Close base", status, tool
// bar, menu and keys.

/// What one of them does by itself, with the current object.
struct HeightShape {
    /// Gives the geometry a height, metres.
    void (*Update)(double height);
    /// Gives up what the tool keeps for itself, however it ends.
    void (*Release)();
    /// Message number, shown in the tool bar.
    int Title;
    const char* ManualPage;
};

/// The tool begins; `shape` stays its owner's. Afterwards the undo snapshot has been taken, nothing is marked, and no
/// clean-up deletes polygons that have no area at the moment.
void BeginHeightTool(const HeightShape& shape);
/// The geometry has been built, with its base polygons marked (see CollectCaps): the ruler opens, and sets the height
/// from now on. It begins with one square of the grid.
void LetUserSetHeight();

/// The ruler shows another height, squares of the grid: the geometry gets it, and the model views are drawn.
void ChangeHeight(double squares);

/// For Update: vertices of these polygons have been moved, and their normals are right. While the user drags, derived
/// data is only made to reach as far as the object now does, and is made anew when the drag ends.
void PolygonsHaveMoved(const std::vector<Polygon*>& polygons);
