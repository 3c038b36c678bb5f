#pragma once

// The materials of the current file as its polygons use them: what is used, what may go, and what the selected polygons
// of the current object get.

/// Sets Used in every material: 1 when a polygon of the file shows it, with or without its texture, else 0. Discards
/// all undo snapshots and the polygon clipboard.
void FlagUsedMaterials();

/// Deletes the materials that no polygon uses; of a file that uses none, the current material stays. Undo snapshots and
/// the polygon clipboard go too.
void DeleteUnusedMaterials();

/// Deletes the current material, unless a polygon uses it or it is the last one, which the user is told.
void DeleteCurrentMaterial();

/// Move the current material by n places towards the beginning (left) or the end of the list, as far as there are any.
void MoveMaterialLeft(int n);
void MoveMaterialRight(int n);

/// What ApplyToSelectedPolygons applies.
enum MaterialApplication { ApplyMaterial = 0, ApplyLighting = 1, ApplyBoth = 2, ApplyLightGroup = 3 };

/// Gives the selected polygons of the current object the current material, the current lighting, both, or the light
/// group chosen last. Can be undone; nothing without a selection.
void ApplyToSelectedPolygons(int application);

/// A light group that no polygon of the current object has; polygons in it are smoothed among themselves only.
int GenerateLightGroup();

/// Light the selected polygons apart from all others (0), in a new light group, or as usual (1), in group 0.
void ApplyLightGroupToSelectedPolygons(int button);
