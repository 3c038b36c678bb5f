#pragma once

#include "store/store_test.h"

#include <algorithm>
#include <random>
#include <vector>

/// Short ways to build polygons and to look at them, each test in an empty file.
class RingModel : public StoreTest {
  protected:
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

    static std::size_t Vertices() { return Collect(EveryVertex(CurrentObject())).size(); }

    static std::size_t Polygons() { return Collect(EveryPolygon(CurrentObject())).size(); }
};
