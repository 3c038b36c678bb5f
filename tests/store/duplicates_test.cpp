#include "store/duplicates.h"

#include "store/connections.h"
#include "store/integrity.h"
#include "store/ring_model.h"
#include "support/test_seed.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>

namespace {

class Duplicates : public RingModel {};

/// Where every vertex ends up when duplicates are found by sorting and walking, stable among equals. Needs connections.
std::map<Vertex*, Vertex*> KeepersBySorting() {
    const auto key = [](const Vertex* vertex, int axis) { return static_cast<float>(vertex->Position[axis]); };
    std::vector<Vertex*> sorted;
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        sorted.push_back(vertex);
    std::stable_sort(sorted.begin(), sorted.end(), [&](const Vertex* a, const Vertex* b) {
        for (int axis = 0; axis < 3; ++axis)
            if (key(a, axis) != key(b, axis))
                return key(a, axis) < key(b, axis);
        return a->Uses < b->Uses;
    });
    std::map<Vertex*, Vertex*> keepers;
    Vertex* keeper = sorted.empty() ? nullptr : sorted.front();
    for (Vertex* vertex : sorted) {
        const bool same = key(vertex, 0) == key(keeper, 0) && key(vertex, 1) == key(keeper, 1) &&
                          key(vertex, 2) == key(keeper, 2) && (keeper->Uses || !vertex->Uses);
        if (!same)
            keeper = vertex;
        keepers[vertex] = keeper;
    }
    return keepers;
}

TEST_F(Duplicates, AgreeWithSorting) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        ResetStorage();
        // Few places, each with neighbours that only doubles can tell apart, and both zeros.
        const int places = 1 + static_cast<int>(random() % 4);
        const auto coordinate = [&] {
            const double place = static_cast<int>(random() % places) - 1;
            return place == 0 && random() % 2 ? -0.0 : place * (1 + (random() % 3) * 1e-12);
        };
        std::vector<Vertex*> vertices;
        const int count = static_cast<int>(random() % 200);
        for (int i = 0; i < count; ++i)
            vertices.push_back(AddVertex(coordinate(), coordinate(), coordinate()));
        for (int i = 0; i < count / 4; ++i) {
            std::vector<Vertex*> corners;
            for (unsigned n = 2 + random() % 4; n; --n)
                corners.push_back(vertices[random() % vertices.size()]);
            AddRing(corners);
        }
        MakeConnections();
        const auto keepers = KeepersBySorting();
        std::vector<Vertex*> survivors;
        for (Vertex* vertex : EveryVertex(CurrentObject()))
            if (keepers.at(vertex) == vertex)
                survivors.push_back(vertex);
        std::vector<std::vector<Vertex*>> rings;
        for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
            std::vector<Vertex*>& ring = rings.emplace_back(Corners(polygon));
            for (Vertex*& corner : ring)
                corner = keepers.at(corner);
            ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
            if (ring.size() > 1 && ring.front() == ring.back())
                ring.pop_back();
        }

        DeleteDuplicateVertices();
        std::vector<Vertex*> left;
        for (Vertex* vertex : EveryVertex(CurrentObject())) {
            left.push_back(vertex);
            EXPECT_EQ(vertex->Mark, 0);
            EXPECT_EQ(vertex->Uses, static_cast<int>(Collect(EveryUse(vertex)).size()));
            for (const PolygonBead* bead : EveryUse(vertex))
                EXPECT_EQ(bead->Vertex, vertex);
        }
        ASSERT_EQ(left, survivors);
        std::size_t n = 0;
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            ASSERT_EQ(Corners(polygon), rings[n++]);
    }
}

TEST_F(Duplicates, CoincidentPolygonsShareVertices) {
    NormalsOK() = 1;
    Polygon* first = AddFace({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    Polygon* second = AddFace({{0, 0, 0}, {0, 1, 0}, {1 + 1e-12, 0, 0}});
    AddVertex(1.001, 0, 0);
    DeleteDuplicateVertices();
    EXPECT_EQ(Vertices(), 4U);
    EXPECT_EQ(Corners(first)[1], Corners(second)[2]);
    EXPECT_EQ(Corners(first)[1]->Uses, 2);
    EXPECT_EQ(NormalsOK(), 0);
}

TEST_F(Duplicates, LooseVerticesMergeOnlyWithEachOther) {
    AddVertex(0, 0, 0);
    AddFace({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    Vertex* firstInList = AddVertex(0, 0, 0);
    DeleteDuplicateVertices();
    EXPECT_EQ(Vertices(), 4U);
    EXPECT_EQ(FirstVertex(), firstInList);
    EXPECT_EQ(firstInList->Uses, 0);
}

TEST_F(Duplicates, TheVertexWithTheFewestUsesStays) {
    Vertex *busy = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(0, 1, 0);
    AddRing({busy, b, c});
    AddRing({busy, c, b});
    Vertex* quiet = AddVertex(0, 0, 0);
    AddRing({quiet, b, c});
    Vertex* busier = AddVertex(0, 0, 0);
    for (int i = 0; i < 3; ++i)
        AddRing({busier, b, c});
    DeleteDuplicateVertices();
    EXPECT_EQ(Vertices(), 3U);
    EXPECT_EQ(quiet->Uses, 6);
}

TEST_F(Duplicates, WhatIsNoNumberIsNeverTheSame) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), huge = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 3; ++i) {
        AddVertex(nan, 0, 0);
        AddVertex(0, 1, nan);
        AddVertex(0, 1, 2);
        AddVertex(huge, 0, 0);
    }
    DeleteDuplicateVertices();
    EXPECT_EQ(Vertices(), std::size_t(3 + 3 + 1 + 1));
}

TEST_F(Duplicates, RepeatedCornersGo) {
    Polygon* polygon = AddFace({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, -0.0}});
    Polygon* point = AddFace({{5, 5, 5}, {5, 5, 5}, {5, 5, 5}});
    DeleteDuplicateVertices();
    EXPECT_EQ(Corners(polygon).size(), 3U);
    EXPECT_EQ(Corners(point).size(), 1U);
    EXPECT_EQ(Polygons(), 2U);
    CheckIntegrity();
}

TEST_F(Duplicates, EmptyObjectIsLeftAlone) {
    NormalsOK() = 1;
    DeleteDuplicateVertices();
    EXPECT_EQ(NormalsOK(), 1);
}

TEST_F(Duplicates, CompareOrdersByPlaceThenUses) {
    const double nan = std::numeric_limits<double>::quiet_NaN();

    const struct {
        double A[3], B[3];
        int UsesA, UsesB, Expected;
    } cases[] = {
        {{0, 9, 9}, {1, 0, 0}, 9, 0, -1},     {{1, 2, 9}, {1, 1, 0}, 0, 0, 1},
        {{1, 1, 1}, {1, 1, 2}, 5, 0, -1},     {{1, 1, 1}, {1, 1, 1}, 2, 1, 1},
        {{1, 1, 1}, {1, 1, 1}, 1, 2, -1},     {{1, 1, 1}, {1, 1, 1}, 2, 2, 0},
        {{-0.0, 0, 0}, {0, 0, 0}, 1, 1, 0},   {{1 + 1e-12, 0, 0}, {1, 0, 0}, 1, 1, 0},
        {{nan, 0, 0}, {1e30, 0, 0}, 0, 0, 1}, {{0, nan, 0}, {0, nan, 1}, 0, 0, -1},
    };

    for (const auto& c : cases) {
        Vertex a{}, b{};
        std::copy_n(c.A, 3, a.Position);
        std::copy_n(c.B, 3, b.Position);
        a.Uses = c.UsesA;
        b.Uses = c.UsesB;
        const Vertex *pointerA = &a, *pointerB = &b;
        EXPECT_EQ(VertexCompare(&pointerA, &pointerB), c.Expected);
        EXPECT_EQ(VertexCompare(&pointerB, &pointerA), -c.Expected);
    }
}

} // namespace
