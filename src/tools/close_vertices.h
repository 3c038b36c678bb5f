#pragma once

#include "store/records.h"

#include <cstdint>
#include <span>
#include <vector>

// Which vertices lie close together.

/// For each of `vertices`, the index of the first vertex that it hangs together with, by a chain of vertices each of
/// which is nearer than `distance` to the next one; its own index when it is the first or alone. Vertices whose place
/// is not finite are alone. Takes time in proportion to the number of vertices, wherever they lie, but for sets that
/// come close to each other without touching: these are searched in their boxes.
std::vector<std::uint32_t> GroupCloseVertices(std::span<Vertex* const> vertices, double distance);
