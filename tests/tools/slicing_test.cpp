#include "store/ring_model.h"

#include "geometry/vectors.h"
#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "support/test_seed.h"
#include "tools/closed_surface.h"
#include "tools/slicing.h"

#include <cmath>
#include <random>

namespace {

class Slicing : public RingModel {
  protected:
    void SetUp() override {
        RingModel::SetUp();
        TheUndoSlots.DeselectEverything = DeselectEverything;
    }

    /// Cuts the whole model with the plane z = height, or with the one that `grid` places.
    static void SliceAll(const Matrix& grid) {
        DeselectAllPolygons();
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            SetPolygonSelected(CurrentObject(), polygon, polygon->Parent == nullptr);
        CleanUpObject();
        View view{};
        view.GridMatrix = grid;
        SlicePolygons(&view);
        CleanUpObject();
        CheckIntegrity();
    }

    static void SliceAll(double height) { SliceAll(TranslationMatrix(0, 0, height)); }

    /// Twice the area of all polygons, as the sum of their vectors.
    static std::vector<double> Areas() {
        std::vector<double> sum(3);
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            for (const PolygonBead* bead : EveryBead(polygon))
                AddNewellEdge(bead->Vertex->Position, NextInRing(polygon, bead)->Vertex->Position, sum.data());
        return sum;
    }

    static std::vector<std::size_t> CornersOfSelected(int selected) {
        std::vector<std::size_t> corners;
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            if (polygon->Selected == selected)
                corners.push_back(Corners(polygon).size());
        std::sort(corners.begin(), corners.end());
        return corners;
    }
};

using Sizes = std::vector<std::size_t>;

TEST_F(Slicing, PartsBeforeThePlaneAreSelected) {
    struct Case {
        const char* What;
        std::vector<std::vector<double>> Ring; // x and z
        double Height;
        Sizes Front, Back;
    };

    const Case cases[] = {
        {"through a square", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, 1, {4}, {4}},
        {"wholly before", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, -1, {4}, {}},
        {"wholly behind", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, 3, {}, {4}},
        {"along the lower edge", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, 0, {4}, {}},
        {"along the upper edge", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, 2, {}, {4}},
        {"through two corners", {{0, 0}, {1, -1}, {2, 0}, {1, 1}}, 0, {3}, {3}},
        {"a U, across its arms", {{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}}, 2, {4, 4}, {8}},
        {"a W, where its middle only touches", {{0, 3}, {1, 0}, {2, 1}, {3, 0}, {4, 3}, {2, 2}}, 1, {}, {}},
    };
    for (const Case& slice : cases) {
        SCOPED_TRACE(slice.What);
        ResetStorage();
        std::vector<std::vector<double>> places;
        for (const auto& corner : slice.Ring)
            places.push_back({corner[0], 0, corner[1]});
        AddFace(places);
        const std::vector<double> before = Areas();
        SliceAll(slice.Height);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(Areas()[axis], before[axis], 1e-12);
        if (slice.Front.empty() && slice.Back.empty())
            continue;
        EXPECT_EQ(CornersOfSelected(1), slice.Front);
        EXPECT_EQ(CornersOfSelected(0), slice.Back);
    }
}

/// Stars with random arms, most of them concave, in random planes.
TEST_F(Slicing, AreasAddUpOverRandomPolygons) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-1, 1);
    for (int round = 0; round < 300; ++round) {
        ResetStorage();
        Matrix turned;
        MultMatrix(YawMatrix(unit(random) * 180), PitchMatrix(unit(random) * 180), turned);
        const int count = 3 + static_cast<int>(random() % 12);
        std::vector<std::vector<double>> places;
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * M_PI * i / count, reach = 2 + unit(random) * 1.5;
            const double flat[3] = {reach * std::cos(angle), reach * std::sin(angle), 0};
            places.emplace_back(3);
            TransformCoordinate(flat, turned, places.back().data());
        }
        AddFace(places);
        const std::vector<double> before = Areas();
        const double volume = SurfaceOfModel().Volume(); // of the cone to the origin
        Matrix grid;
        MultMatrix(PitchMatrix(unit(random) * 180), TranslationMatrix(0, unit(random), unit(random)), grid);
        SliceAll(grid);
        for (int axis = 0; axis < 3; ++axis)
            ASSERT_NEAR(Areas()[axis], before[axis], 1e-9) << "round " << round;
        ASSERT_NEAR(SurfaceOfModel().Volume(), volume, 1e-9) << "round " << round;
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            for (const Vertex* vertex : Corners(polygon)) {
                const double side = (vertex->Position[0] - grid[3][0]) * grid[2][0] +
                                    (vertex->Position[1] - grid[3][1]) * grid[2][1] +
                                    (vertex->Position[2] - grid[3][2]) * grid[2][2];
                ASSERT_GE(polygon->Selected ? side : -side, -1e-9) << "round " << round;
            }
    }
}

TEST_F(Slicing, SubPolygonsGoWithTheirParentsAndUndoBringsAllBack) {
    Polygon* square = AddFace({{0, 0, 0}, {4, 0, 0}, {4, 0, 4}, {0, 0, 4}});
    Polygon* decal = AddFace({{1, 0, 1}, {3, 0, 1}, {3, 0, 3}, {1, 0, 3}}, square);
    AddFace({{1, 0, 2.5}, {2, 0, 2.5}, {2, 0, 3}, {1, 0, 3}}, decal);
    SubObject* const own = SelectedSubObject();
    SubObject* const other = AddSubObject("Other");
    SelectedSubObject() = other;
    SliceAll(2);
    EXPECT_EQ(SelectedSubObject(), other);
    EXPECT_EQ(Polygons(), 5u);
    int front = 0, children = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        EXPECT_EQ(polygon->SubObject, own);
        front += polygon->Selected;
        children += polygon->Parent != nullptr;
        EXPECT_TRUE(!polygon->Parent || polygon->Parent->Selected == polygon->Selected);
    }
    EXPECT_EQ(front, 3);
    EXPECT_EQ(children, 3);
    Undo();
    CleanUpObject();
    EXPECT_EQ(Polygons(), 3u);
    EXPECT_EQ(Vertices(), 12u);
    Undo();
    CleanUpObject();
    EXPECT_EQ(Polygons(), 5u);
}

TEST_F(Slicing, CutsKeepTheTextureAndPartTheSides) {
    AddGrid(1, 2); // in the plane z = 0, cut across x
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        for (PolygonBead* bead : EveryBead(polygon))
            bead->TexCoord[0] = static_cast<float>(bead->Vertex->Position[0]);
    Matrix grid;
    MultMatrix(RollMatrix(90), TranslationMatrix(0.5, 0, 0), grid);
    SliceAll(grid);
    EXPECT_EQ(Polygons(), 3u);
    EXPECT_EQ(Vertices(), 10u); // the two at the cut on both sides, the shared edge once
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        for (const PolygonBead* bead : EveryBead(polygon)) {
            EXPECT_FLOAT_EQ(bead->TexCoord[0], static_cast<float>(bead->Vertex->Position[0]));
            for (const PolygonBead* use : EveryUse(bead->Vertex))
                EXPECT_EQ(use->Polygon->Selected, polygon->Selected);
        }
}

} // namespace
