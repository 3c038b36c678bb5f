#pragma once

struct View;

// The tool that places a solid on the grid, by its middle and its radius, and shows it until it is added to the model.
// The only solid is the sphere.

/// Starts it, unless polygons cannot be made now, which it tells. It runs until Done, which adds the sphere, or Cancel.
void CreateSphere();

/// Depth of a new sphere, LeastSphereDepth to MostSphereDepth; an option of the tool, kept with the defaults.
extern int NewSphereDepth;

/// Shows the solid that is being made: an overlay of the views.
void DrawNewSolid(View* view);
/// What it depends on, the material say, has changed: the views are drawn again while there is one.
void DirtySolids();
