#pragma once

#include "store/accessors.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

// The models that benchmarks measure.

/// A wavy sheet of `side` x `side` quadrilaterals that share their corners, as a new current object, built through the
/// editing primitives. Vertices stand on a grid with 1 m steps.
inline Object* BuildSheet(int side) {
    Object* object = AddObject("Sheet", 0, 0);
    std::vector<Vertex*> vertices(static_cast<std::size_t>(side + 1) * (side + 1));
    for (int y = 0; y <= side; ++y)
        for (int x = 0; x <= side; ++x)
            vertices[static_cast<std::size_t>(y) * (side + 1) + x] = AddVertex(x, y, 0.25 * ((x * 7 + y * 3) % 11));
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const std::size_t corner = static_cast<std::size_t>(y) * (side + 1) + x;
            PolygonBead* beads = nullptr;
            AddPolygonBead(beads, vertices[corner]);
            AddPolygonBead(beads, vertices[corner + 1]);
            AddPolygonBead(beads, vertices[corner + side + 2]);
            AddPolygonBead(beads, vertices[corner + side + 1]);
            AddPolygon(beads, nullptr);
        }
    return object;
}

/// The same sheet with four vertices of its own for every quadrilateral.
inline Object* BuildSeparateSheet(int side) {
    Object* object = AddObject("Separate sheet", 0, 0);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            PolygonBead* beads = nullptr;
            for (const auto& [dx, dy] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
                const int cx = x + dx, cy = y + dy;
                AddPolygonBead(beads, AddVertex(cx, cy, 0.25 * ((cx * 7 + cy * 3) % 11)));
            }
            AddPolygon(beads, nullptr);
        }
    return object;
}

/// Edits the current object at random for a while: removes and re-creates polygons so that records and lists come to
/// lie in no order. The object keeps its size.
inline void EditAtRandom(int edits) {
    std::mt19937 random(12345);
    std::vector<Polygon*> polygons;
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        polygons.push_back(polygon);
    std::vector<Vertex*> vertices;
    for (int i = 0; i < edits; ++i) {
        Polygon*& polygon = polygons[random() % polygons.size()];
        vertices.clear();
        for (const PolygonBead* bead : EveryBead(polygon))
            vertices.push_back(bead->Vertex);
        DeletePolygon(polygon, 0);
        PolygonBead* beads = nullptr;
        for (Vertex* vertex : vertices)
            AddPolygonBead(beads, vertex);
        polygon = AddPolygon(beads, nullptr);
    }
}

/// Resident memory of this process, bytes.
inline double ResidentBytes() {
    std::ifstream status("/proc/self/statm");
    double total = 0, resident = 0;
    status >> total >> resident;
    return resident * 4096;
}
