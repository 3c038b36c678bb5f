#pragma once

#include "store/records.h"

#include <vector>

// The polygons that close the shapes of a running tool at their base, as the user wants them or not.

/// Flag, "Close base": kept from run to run.
extern int CapBottoms;

/// The base polygons of this run; those among them that are out of the object, because CapBottoms is 0.
extern std::vector<Polygon*> CapList, RemovedCaps;

/// Makes base polygons of all polygons of the current object whose Mark is set: they are top-level ones that face away
/// from the shape, and stay in the object or not as CapBottoms says.
void CollectCaps();
/// CapBottoms has changed.
void ChangeCapping();
/// The run ends: forgets the base polygons, and releases those that are out of the object.
void FreeCaps();

/// Selected or not, as solid shapes are to be seen while they change.
void SelectAsSolid(Polygon* polygon);
