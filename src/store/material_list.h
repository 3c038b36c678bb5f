#pragma once

#include "store/records.h"

// The current file's materials, in the order in which they were added.

/// Appends the material. The first of a list becomes the current material, unless merging.
void AddMaterial(Material* material);

/// Takes the material off the list and frees it; a deleted current material is succeeded by a neighbour. Polygons that
/// use it are not changed: replace it first.
void DeleteMaterial(Material* material);

/// Takes the material off the list and leaves it to the caller.
void TakeMaterialOffList(Material* material);

void FreeAllMaterials();

/// Names the material with a copy of `name`, "Unnamed" for null.
void RenameMaterial(Material* material, const char* name);

/// Copies colours, PackedColour and name.
void CopyMaterial(Material* destination, const Material* source);

/// 1 when names and all fourteen colour values are exactly equal.
int MaterialsAreTheSame(const Material* a, const Material* b);

/// The first material of the list that is the same, or null.
Material* FindMaterial(const Material* material);

/// Makes every polygon of the file that uses one material use another. Discards all undo snapshots and the polygon
/// clipboard.
void SearchAndReplaceMaterial(Material* old, Material* replacement);
