// Drawing from buffers that stay in graphics memory, in the present state. For the layer's own modules.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "platform/batch.h"

namespace gl {

struct StaticRun {
    unsigned arrays = 0; // vertex array, with its index buffer
    unsigned mode = 0;   // of the driver: triangles, lines or points
    long firstIndex = 0; // in bytes
    int indexCount = 0;
    Shape shape = Shape::Triangles;
    bool lit = false, precise = false;
    const std::vector<int>* materials = nullptr; // which the vertices name by their slots; -1: the bound one
    std::optional<uint32_t> oneColour;           // instead of the vertices' own, where they are not lit
    std::array<double, 3> origin = {0, 0, 0};    // what positions are relative to
    std::array<double, 3> low = {0, 0, 0}, high = {0, 0, 0}; // box, in the coordinates of the recording
};

void DrawStaticRun(const StaticRun& run);

} // namespace gl
