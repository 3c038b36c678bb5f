// What a recording keeps. For the layer's own modules.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "platform/batch.h"

namespace gl {

using PositionRest = std::array<float, 3>;

// Vertices, and what they lack in precision, in graphics memory.
struct VertexStore {
    unsigned arrays = 0, vertices = 0, rests = 0, indices = 0;
    long bytes = 0;

    void release();
};

// Of a palette: the material that is bound when the recording is drawn.
constexpr int InheritedMaterial = -1;

// Consecutive primitives of one shape.
struct Run {
    Shape shape = Shape::Triangles;
    int first = 0, count = 0; // of the indices
    bool lit = false;
    int palette = 0;
    int firstWide = -1; // of the indices of the widened lines
};

struct RecordedItem {
    int run = -1; // or a command
    std::function<void()> command;
};

struct ObjectRecording {
    std::vector<RecordedItem> items;
    std::vector<Run> runs;
    // The materials that vertices name by their slot; a run has one of these, up to MaterialSlots materials long.
    std::vector<std::vector<int>> palettes = {{}};
    VertexStore store, wideStore;
    std::array<double, 3> origin = {0, 0, 0}, low = {1e300, 1e300, 1e300}, high = {-1e300, -1e300, -1e300};
    bool precise = false;
    int vertexCount = 0, indexCount = 0;
    // On the way to graphics memory.
    std::vector<Vertex> vertices;
    std::vector<PositionRest> rests; // as many as vertices when precise, else none
    std::vector<uint32_t> indices;

    ObjectRecording() = default;
    ObjectRecording(const ObjectRecording&) = delete;
    ObjectRecording& operator=(const ObjectRecording&) = delete;
    ~ObjectRecording();

    // Moves what was gathered to graphics memory.
    void upload();
    // Makes what wide, dashed and smooth lines need, when the first of them is drawn: four corners for each segment.
    void widenLines();
};

} // namespace gl
