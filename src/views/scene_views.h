#pragma once

#include "store/records.h"

// The scene's views, grid and work area; an object's own are fields of the object.

/// One a viewport.
extern View SceneView[ViewportLimit];

extern View DefaultScene3D;

/// By direction.
extern View DefaultScene2D[DefaultView2DCount];

extern WorkAreaRecord SceneWorkArea;

extern std::int32_t SceneGridIndex; // grid size index
extern std::int32_t SceneGridSteps; // grid subdivision count

/// Have the scene's views, their defaults and its work area made anew before their next use.
void DevalidateSceneViews();

/// The same for the current object's views and their defaults.
void DevalidateObjectViews();
