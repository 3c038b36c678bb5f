#include "store/store_test.h"
#include "tools/closed_surface.h"

#include "geometry/vectors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "tools/sweep.h"
#include "tools/sweep_adding.h"
#include "views/grid.h"

#include <cmath>
#include <random>
#include <set>

namespace {

struct P {
    double X, Y, Z = 0;
};

class Sweeps : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        ObjectIsolated = 1;
        InitialiseSweep(Swept);
        Swept.GridIndex = 9;
        ASSERT_DOUBLE_EQ(GridSquare(9), 1);
        Swept.HasUp = 1;
        Swept.Up[0] = Swept.Up[1] = 0;
        Swept.Up[2] = 1;
    }

    void TearDown() override {
        FreeSweepMesh(Swept);
        StoreTest::TearDown();
    }

    static void Fill(Elist& list, const std::vector<P>& points, bool closed = false) {
        ResetElist(list);
        for (const P& p : points) {
            const double place[3] = {p.X, p.Y, p.Z};
            AppendEbead(list, place);
        }
        list.Closed = closed;
    }

    /// A profile that goes clockwise, so that the surface faces outward: along the path x is to the right.
    static std::vector<P> Square() { return {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}}; }

    Surface Added(const Matrix* matrix = nullptr) {
        EXPECT_EQ(AddSweepToModel(Swept, matrix), 1);
        CheckIntegrity();
        CleanUpObject();
        return SurfaceOfModel();
    }

    void ExpectNear(const double* place, double x, double y, double z) {
        EXPECT_NEAR(place[0], x, 1e-9);
        EXPECT_NEAR(place[1], y, 1e-9);
        EXPECT_NEAR(place[2], z, 1e-9);
    }

    Sweep Swept;
};

TEST_F(Sweeps, APieceOfWallStandsToTheRightOfThePath) {
    Fill(Swept.Path, {{0, 0}, {0, 10}});
    Fill(Swept.Profile, {{0, 0}, {0, 3}, {0.25, 3}, {0.25, 0}});
    const Surface wall = Added();
    EXPECT_EQ(Swept.PolygonCount, 3 + 2);
    EXPECT_EQ(wall.Faces, 5);
    ExpectNear(ObjectMin(), 0, 0, 0);
    ExpectNear(ObjectMax(), 0.25, 10, 3);
    // Faces left, up, right, back and front; it stands open on the ground.
    double sum[3] = {};
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += polygon->Normal[axis];
    ExpectNear(sum, 0, 0, 1);
}

TEST_F(Sweeps, TubesAreClosedSolids) {
    Fill(Swept.Path, {{0, 0}, {0, 10}, {10, 10}, {10, 15, 5}});
    Fill(Swept.Profile, Square(), true);
    Surface tube = Added();
    EXPECT_TRUE(tube.IsManifold());
    EXPECT_EQ(tube.EulerCharacteristic(), 2);
    EXPECT_NEAR(tube.Volume(), 4 * (20 + std::hypot(5, 5)), 0.5);
    EXPECT_EQ(tube.Faces, Swept.PolygonCount);

    SetUp();
    Swept.Path.Closed = 1;
    Fill(Swept.Path, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, true);
    Fill(Swept.Profile, Square(), true);
    tube = Added();
    EXPECT_EQ(tube.Faces, 16); // a frame needs no caps
    EXPECT_TRUE(tube.IsManifold());
    EXPECT_EQ(tube.EulerCharacteristic(), 0);
    EXPECT_NEAR(tube.Volume(), 4 * 40, 1e-6);
}

TEST_F(Sweeps, RandomOnesAreSolidsWithOrWithoutCorners) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> turn(-1, 1);
    for (int round = 0; round < 60; ++round) {
        SetUp();
        SCOPED_TRACE(round);
        // A path that goes on and turns by up to 60 degrees, a star-shaped profile.
        std::vector<P> path = {{0, 0, 0}}, profile;
        double heading = 0;
        for (int i = 0; i < 6; ++i) {
            heading += turn(random);
            path.push_back({path.back().X + 20 * std::cos(heading), path.back().Y + 20 * std::sin(heading),
                            round % 2 ? path.back().Z + 4 * turn(random) : 0});
        }
        for (int i = 0; i < 7; ++i) {
            const double radius = 1.5 + turn(random), angle = -i * 2 * M_PI / 7;
            profile.push_back({radius * std::cos(angle), radius * std::sin(angle)});
        }
        Fill(Swept.Path, path);
        Fill(Swept.Profile, profile, true);
        for (Elist* list : {&Swept.Path, &Swept.Profile}) {
            list->Basis = round / 2 % 2;
            for (Ebead* bead = list->First; bead; bead = bead->Next)
                bead->CurvePoint = turn(random) > 0;
        }
        Swept.InsideOut = round % 3 == 0;
        const Surface solid = Added();
        EXPECT_TRUE(solid.IsManifold());
        EXPECT_EQ(solid.EulerCharacteristic(), 2);
        EXPECT_GT(Swept.InsideOut ? -solid.Volume() : solid.Volume(), 0);
        EXPECT_EQ(solid.Faces, Swept.PolygonCount);
    }
}

TEST_F(Sweeps, ThePathTurningBackReflectsTheProfile) {
    Fill(Swept.Path, {{0, 0}, {0, 10}, {0, 2}});
    Fill(Swept.Profile, {{1, 0}, {2, 0}});
    Swept.CapEnds = 0;
    RemakeSweepMesh(Swept);
    ASSERT_EQ(RowsOf(Swept), 1);
    ASSERT_EQ(ColumnsOf(Swept), 2);
    ExpectNear(CellOf(Swept, 1, 1).Start, 1, 0, 0);
    ExpectNear(CellOf(Swept, 1, 1).End, 1, 10, 0);
    EXPECT_EQ(CellOf(Swept, 1, 2).Crease & PathCrease, PathCrease);
    // Facing back, the right of the path is where its left was.
    EXPECT_NEAR(std::fabs(CellOf(Swept, 1, 2).Start[0]), 1, 1e-9);
    EXPECT_NEAR(CellOf(Swept, 1, 2).Start[1], 10, 1e-9);
    EXPECT_NEAR(CellOf(Swept, 1, 2).End[1], 2, 1e-9);
}

TEST_F(Sweeps, RingsGetCapsOnBothSidesWhenTheProfileIsOpen) {
    Fill(Swept.Path, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}, true);
    Fill(Swept.Profile, {{-1, 0}, {-1, 2}});
    const Surface box = Added();
    EXPECT_EQ(box.Faces, 4 + 2);
    EXPECT_TRUE(box.IsManifold());
    EXPECT_EQ(box.EulerCharacteristic(), 2);
    EXPECT_NEAR(std::fabs(box.Volume()), 12 * 12 * 2, 1e-6);
}

TEST_F(Sweeps, DoubleSidedOnesAreNotReversed) {
    Fill(Swept.Path, {{0, 0}, {0, 10}, {5, 15}});
    Fill(Swept.Profile, {{0, 0}, {0, 3}, {0.25, 3}, {0.25, 0}});
    Swept.DoubleSided = Swept.InsideOut = 1;
    const Surface both = Added();
    EXPECT_EQ(both.Faces, Swept.PolygonCount);
    EXPECT_EQ(both.Faces, 2 * (2 * 3 + 2));
    EXPECT_TRUE(both.IsClosed());
    EXPECT_NEAR(both.Volume(), 0, 1e-9);
    Undo();
    EXPECT_EQ(FirstPolygon(), nullptr);
}

TEST_F(Sweeps, AreLitTogetherWhereClosedCurvesBegin) {
    // A ring whose path and profile begin in the middle of a smooth stretch, with two sharp corners each elsewhere.
    Fill(Swept.Path, {{0, 0}, {10, 0}, {20, 8}, {10, 16}, {0, 16}, {-40, 8}}, true);
    Fill(Swept.Profile, {{0, 1}, {1, 0.5}, {1, -0.5}, {-4, 0}, {-0.5, 0.9}}, true);
    CurrentLighting = LightingSmooth;
    const Surface ring = Added();
    EXPECT_TRUE(ring.IsManifold());
    std::set<int> groups;
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        groups.insert(polygon->LightGroup);
    EXPECT_EQ(groups.size(), 2u * 2u);
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        EXPECT_EQ(vertex->Uses, 4);
}

TEST_F(Sweeps, TexturesFollowTheProfileAndThePath) {
    Texture* texture = CurrentTexture() = NewTexture();
    Fill(Swept.Path, {{0, 0}, {0, 10}, {0, 30}});
    Fill(Swept.Profile, {{0, 0}, {0, 3}, {1, 3}});
    Swept.ApplyTexture = 1;
    Swept.Repeat = 2;
    Swept.Stretch = 4;
    for (const int sideways : {0, 1}) {
        Swept.Sideways = sideways;
        SweepChanged(Swept);
        RemakeSweepMesh(Swept);
        float coordinates[2];
        TextureAtCorner(Swept, RowsOf(Swept), ColumnsOf(Swept), NextEndCorner, coordinates);
        EXPECT_NEAR(coordinates[sideways], sideways ? -2 : 2, 1e-5); // twice over the profile
        EXPECT_NEAR(coordinates[!sideways], 30 * 2.0 / 4 / 4, 1e-5); // 30 m, the profile's 4 m, stretched
    }
    Added();
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        EXPECT_EQ(polygon->Texture, texture);
    SetUp();
    CurrentTexture() = nullptr;
    FreeTexture(texture);
}

TEST_F(Sweeps, RevolvedProfilesAreSolids) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> radius(0.1, 2);
    Swept.Revolve = 1;
    for (const int sides : {3, 4, 16, 128}) {
        Swept.Sides = sides;
        // From the top down, so that it faces outward; with a foot and a lid, or with its ends on the axis.
        for (const bool onAxis : {false, true}) {
            StoreTest::SetUp();
            std::vector<P> profile;
            for (int i = 0; i < 6; ++i)
                profile.push_back({onAxis && i % 5 == 0 ? 0 : radius(random), 6.0 - i});
            Fill(Swept.Profile, profile);
            SweepChanged(Swept);
            const Surface solid = Added();
            SCOPED_TRACE(sides);
            EXPECT_TRUE(solid.IsManifold());
            EXPECT_EQ(solid.EulerCharacteristic(), 2);
            EXPECT_GT(solid.Volume(), 0);
            EXPECT_EQ(solid.Faces, onAxis ? 5 * sides : 5 * sides + 2);
        }
    }
    // A torus is closed by itself; a segment on the axis leaves nothing.
    StoreTest::SetUp();
    Fill(Swept.Profile, {{2, 1}, {3, 0}, {2, -1}, {1, 0}}, true);
    SweepChanged(Swept);
    const Surface torus = Added();
    EXPECT_TRUE(torus.IsManifold());
    EXPECT_EQ(torus.EulerCharacteristic(), 0);
    StoreTest::SetUp();
    Fill(Swept.Profile, {{1, 2}, {0, 2}, {0, 1}, {0, 0}, {1, 0}});
    SweepChanged(Swept);
    Swept.CapEnds = 0;
    EXPECT_EQ(Added().Faces, 2 * 128);
    // Across the axis: two cones that meet in a point, in place of polygons that cross themselves.
    StoreTest::SetUp();
    Swept.Sides = 16;
    Fill(Swept.Profile, {{-1, -1}, {1, 1}});
    SweepChanged(Swept);
    EXPECT_EQ(Added().Faces, 2 * 16);
}

TEST_F(Sweeps, StrangeCurvesDoNoHarm) {
    const std::vector<std::vector<P>> paths = {
        {},
        {{1, 1}},
        {{1, 1}, {1, 1}},
        {{0, 0}, {5, 0}, {5, 0}, {5, 0}, {5, 5}},
        {{0, 0}, {5, 0}, {0, 0}},
        {{0, 0}, {5, 0}, {0, 0}, {5, 0}},
        {{0, 0}, {5, 0.1}, {0, 0}, {0, 5}},
        {{0, 0, 0}, {0, 0, 9}},                     // straight up, along the grid's normal
        {{0, 0}, {3, 0}, {6, 0}, {9, 0}},           // in one line
        {{0, 0}, {5, 5, 5}, {9, 0, -3}, {2, -8, 1}} // out of any plane
    };
    const std::vector<std::vector<P>> profiles = {{},
                                                  {{1, 1}},
                                                  {{1, 1}, {1, 1}},
                                                  {{0, 0}, {1, 0}},
                                                  {{0, 0}, {1, 0}, {0, 0}},
                                                  {{0, 0}, {2, 2}, {2, 0}, {0, 2}}}; // crosses itself
    for (const auto& path : paths)
        for (const auto& profile : profiles)
            for (int options = 0; options < 8; ++options) {
                SetUp();
                Fill(Swept.Path, path, options & 1);
                Fill(Swept.Profile, profile, options & 2);
                Swept.Revolve = (options & 4) != 0;
                CurrentLighting = options & 1 ? LightingSmooth : LightingFaceted;
                const int added = AddSweepToModel(Swept, nullptr);
                EXPECT_EQ(added, HasMesh(Swept));
                CleanUpObject();
                CheckIntegrity();
                for (const Vertex* vertex : EveryVertex(CurrentObject()))
                    for (const double coordinate : vertex->Position)
                        EXPECT_LT(std::fabs(coordinate), 1000);
            }
    Fill(Swept.Path, paths.back(), true);
    Fill(Swept.Profile, profiles[3]);
    Swept.Revolve = 0;
    SweepChanged(Swept);
    RemakeSweepMesh(Swept);
    EXPECT_EQ(Swept.Path.Closed, 0); // a path that is closed lies in a plane
}

} // namespace
