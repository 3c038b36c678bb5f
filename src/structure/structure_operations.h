#pragma once

#include "store/records.h"

// What the structure editor does to the current object: its sub-objects, its levels of detail and what these contain.
// "Selected" are the object's SelectedSubObject and SelectedLod; without the one that is needed nothing happens. Names
// are asked for in prompts, and one that another has is refused.

/// The sub-object, the level of detail of exactly this name; null: there is none.
SubObject* SubObjectExists(const char* name);
Lod* LodExists(const char* name);

/// A sub-object, which becomes selected and part of the selected level.
void AddNewSubObject();
void RenameSubObject();
/// With its polygons, and the vertices that nothing else uses.
void DeleteSelectedSubObject();

/// An empty level, which becomes selected.
void AddNewLod();
void RenameLod();
/// Its sub-objects stay. Cannot be undone.
void DeleteSelectedLod();

// Of the selected level, and of the selected sub-object's place in it.
void AddSubObjectToLod();
void RemoveSubObjectFromLod();
void ShuffleSubObjectUp();
void ShuffleSubObjectDown();
/// Takes a member to the place before the member with this number, counted from 0; their number: to the end.
void MoveLodBead(LodBead* bead, int before);

/// Where in a level a sub-object stands; null for a null level, and where it is not part of it.
LodBead* LodBeadOf(const Lod* lod, const SubObject* subObject);

/// Selects the sub-object of the selected polygon, which must be one.
void FindSelectedPolygonsSubObject();

/// The farthest switching distance, metres.
inline constexpr double FarthestLodDistance = 1000000;
/// Within 0 and the farthest.
double UsableLodDistance(double distance);
void ClampLodDistances();
/// Gives the selected level this switching distance, brought within bounds.
void SetLodDistance(double distance);
/// Selects the level that is seen from this distance, or none beyond all of them. 1 when that is another one.
int SelectLodByDistance(double distance);

/// After a change: checks and sorts the object, deselects everything if asked, and has all that shows it drawn.
void CleanUpAfterStructOp(int deselect);
/// Has the model views and the structure windows drawn.
void RedrawStructure();
