#pragma once

#include "store/records.h"

// One level of undo by whole-object snapshots. A file holds at most one snapshot at a time.

/// What Undo needs done above the store, in this order; each is skipped when null. The restored object is current when
/// they run; its connections are stale.
struct UndoSlots {
    void (*RedefineMaterials)() = nullptr;    // materials must be defined anew before the next drawing
    void (*DeselectEverything)() = nullptr;   // before the object is sorted and checked
    void (*DirtyModelWindows)() = nullptr;    // after the check
    void (*DirtyStructureEditor)() = nullptr; // after the check
    void (*SnapshotTaken)() = nullptr;        // not of Undo: CopyCurrentObject has taken a snapshot
};

extern UndoSlots TheUndoSlots;

/// Takes the snapshot of the current object: geometry, structure, name, attributes and radius; no selections, views,
/// work area, grid or caches. Discards every other snapshot of the file. Editing commands call it before they change
/// anything.
void CopyCurrentObject();

/// Exchanges the current object with its snapshot, if it has one: a second call redoes. Views, work area and grid stay
/// with the user, placements in the scene come along.
void Undo();

/// Precedes every placement of the current object, in copies of the scene too, by a translation: the object keeps its
/// place in the scene when its vertices have moved the other way. Its snapshot undoes this as well.
void MovePlacements(const double* offset);

/// Makes a branch that shows the current object show the object's snapshot.
void SortOutScene(Branch* branch);

void CopyView(View& destination, const View& source);
void SwapViews(View& a, View& b);
