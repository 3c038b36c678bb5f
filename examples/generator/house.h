#pragma once

/// Builds, in the empty store, a house with a tower and a path, without textures on them: one to put textures on.
void BuildHouse();
