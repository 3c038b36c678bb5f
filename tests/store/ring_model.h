#pragma once

#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/walks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

/// An empty file around each test, and short ways to build polygons and to look at them.
class RingModel : public testing::Test {
  protected:
    void SetUp() override {
        PointToMerge(0);
        ResetStorage();
        CurrentLighting = LightingFaceted;
    }

    void TearDown() override { ResetStorage(); }

    static Polygon* AddRing(const std::vector<Vertex*>& corners, Polygon* parent = nullptr) {
        PolygonBead* beads = nullptr;
        for (Vertex* corner : corners)
            AddPolygonBead(beads, corner);
        Polygon* polygon = AddPolygon(beads, parent);
        polygon->SubObject = parent ? parent->SubObject : polygon->SubObject;
        return polygon;
    }

    /// A polygon with vertices of its own.
    static Polygon* AddFace(const std::vector<std::vector<double>>& places, Polygon* parent = nullptr) {
        std::vector<Vertex*> corners;
        for (const auto& place : places)
            corners.push_back(AddVertex(place[0], place[1], place[2]));
        return AddRing(corners, parent);
    }

    /// rows x columns unit quadrilaterals in the plane z = 0 that share their vertices.
    static void AddGrid(int rows, int columns) {
        std::vector<Vertex*> corners;
        for (int row = 0; row <= rows; ++row)
            for (int column = 0; column <= columns; ++column)
                corners.push_back(AddVertex(column, row, 0));
        const auto at = [&](int row, int column) { return corners[row * (columns + 1) + column]; };
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column)
                AddRing({at(row, column), at(row, column + 1), at(row + 1, column + 1), at(row + 1, column)});
    }

    template <class Range>
    static int Count(const Range& range) {
        int count = 0;
        for ([[maybe_unused]] auto* record : range)
            ++count;
        return count;
    }

    static int Vertices() { return Count(EveryVertex(CurrentObject())); }

    static int Polygons() { return Count(EveryPolygon(CurrentObject())); }

    static std::vector<Vertex*> Corners(const Polygon* polygon) {
        std::vector<Vertex*> corners;
        for (const PolygonBead* bead : EveryBead(polygon))
            corners.push_back(bead->Vertex);
        return corners;
    }
};
