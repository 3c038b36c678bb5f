#pragma once

#include "base/exit.h"
#include "store/accessors.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/undo.h"
#include "store/walks.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

/// Starts every test with two empty files and no slot filled, and leaves nothing behind.
class StoreTest : public testing::Test {
  protected:
    void SetUp() override { Empty(); }

    void TearDown() override {
        TheStorageSlots = {};
        TheSceneSlots = {};
        TheUndoSlots = {};
        TheFirstObjectSlots = {};
        Empty();
    }

  private:
    static void Empty() {
        for (int merging : {1, 0}) {
            PointToMerge(merging);
            ResetStorage();
        }
        WorkSaved = 1;
        CurrentLighting = LightingFaceted;
    }
};

/// A polygon on the given vertices, committed with AddPolygon.
inline Polygon* PolygonOn(std::initializer_list<Vertex*> vertices, Polygon* parent = nullptr) {
    PolygonBead* beads = nullptr;
    for (Vertex* vertex : vertices)
        AddPolygonBead(beads, vertex);
    return AddPolygon(beads, parent);
}

/// A triangle on three new vertices at x, x + 1 and x + 2, not in one line.
inline Polygon* TriangleAt(double x, Polygon* parent = nullptr) {
    return PolygonOn({AddVertex(x, 0, 0), AddVertex(x + 1, 1, 0), AddVertex(x + 2, 0, 1)}, parent);
}

template <class Walk>
auto Collect(Walk walk) {
    std::vector<decltype(*walk.begin())> records;
    for (auto* record : walk)
        records.push_back(record);
    return records;
}

template <class Walk>
std::vector<std::string> Names(Walk walk) {
    std::vector<std::string> names;
    for (auto* record : walk)
        names.emplace_back(record->Name);
    return names;
}

inline std::vector<Vertex*> Corners(const Polygon* polygon) {
    std::vector<Vertex*> corners;
    for (const PolygonBead* bead : EveryBead(polygon))
        corners.push_back(bead->Vertex);
    return corners;
}
