#pragma once

// Derived data of the current object on demand. Edits only clear the cache flags; whoever is about to draw, pick, write
// or read derived data calls CleanUpObject.

/// Brings connections, order of the lists, normals, bounds and selection lists up to date, as far as the flags say that
/// they are stale. Polygons without area are deleted. With every flag in order it does nothing.
void CleanUpObject();

/// Makes the object's radius reach a tenth beyond the point (model space) when it is smaller: for geometry that is
/// being added, before the next clean-up.
void ChangeObjectRadius(const double* point);
