#pragma once

#include "store/records.h"

// The materials that a new model starts with.

/// Flag, a preference: the materials of the user's default palette rather than the built-in ones.
extern int LoadMaterialsOnNew;

/// Sets one component (0 red, 1 green, 2 blue) of all four colours to those of a plastic that has the component (`on`)
/// or lacks it.
void MakeMat(Material* material, int on, int component);

/// A material by a colour number: 0 grey, otherwise a sum of red 1, green 2 and blue 4, all but white; or TextureColour
/// for one that is almost white, which shows a texture's own colours.
inline constexpr int TextureColour = 7;
Material* NewColouredMaterial(int colour);

/// Gives the current file its first materials, of which the first becomes current; new polygons become smooth. Does
/// nothing during start-up, when it is called once more at the end.
void MakeDefaultMaterials();
