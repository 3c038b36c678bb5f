#pragma once

#include "files/primitives.h"

// The parts of a model file about how things are placed and looked at.

/// The scene's branches; nothing when it has none.
void WriteSceneTree(FileWriter& file);

/// The views of the current object that are set up.
void WriteObjectViews(FileWriter& file);

/// The views of the scene that are set up.
void WriteSceneViews(FileWriter& file);
