#pragma once

#include "store/records.h"

// Adding and removing sub-objects and levels of detail of the current object.

/// A sub-object with a copy of the name, at the head of the list and selected.
SubObject* AddSubObject(const char* name);

/// Removes the sub-object with its polygons and its memberships; `deleteVertices` as in DeletePolygon. The selection is
/// repaired by the next SelectedSubObject.
void DeleteSubObject(SubObject* subObject, int deleteVertices);

/// A level with a copy of the name, at the head of the list and selected.
Lod* AddLod(const char* name);

/// Makes a sub-object a member of the selected level. Whether it is one already is the caller's to check.
LodBead* AddLodBead(SubObject* subObject);

void DeleteLodBead(LodBead* bead);

/// Makes a level the selected one, and its first member the selected sub-object unless that is a member already: what
/// is made or moved next goes to where it can be seen. An empty level leaves the sub-object.
void SelectLod(Lod* lod);

void DeleteLod(Lod* lod);
