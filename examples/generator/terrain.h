#pragma once

#include <string>

/// Writes the image that covers the terrain.
bool WriteTerrainTexture(const std::string& directory);

/// Builds a mountain landscape of 100,000 triangles in the empty store.
void BuildTerrain();
