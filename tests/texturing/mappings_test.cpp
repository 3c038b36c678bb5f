#include "store/ring_model.h"

#include "base/memory.h"
#include "geometry/planes.h"
#include "interaction/quad_strips.h"
#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/texture_list.h"
#include "texturing/mappings.h"

#include <cmath>

namespace {

class Mappings : public RingModel {
  protected:
    void SetUp() override {
        RingModel::SetUp();
        TheTexture = NewTexture();
        TheTexture->FileName = CopyOfString("wall.rgb");
        TheTexture->Aspect = 2;
        AddTextureToList(TheTexture);
    }

    static std::vector<double> Coordinates(const Polygon* polygon) {
        std::vector<double> all;
        for (const PolygonBead* bead : EveryBead(polygon))
            all.insert(all.end(), bead->TexCoord, bead->TexCoord + 2);
        return all;
    }

    static void ExpectCoordinates(const Polygon* polygon, const std::vector<double>& expected) {
        const std::vector<double> found = Coordinates(polygon);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 1e-5) << "number " << i;
    }

    /// A cube, a roof of two slopes and a tube of eight sides, all about the origin.
    static void AddShapes() {
        const double places[8][3] = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                                     {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
        for (const auto& face :
             {std::vector{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}}) {
            std::vector<std::vector<double>> ring;
            for (const int corner : face)
                ring.push_back({places[corner][0], places[corner][1], places[corner][2]});
            AddFace(ring);
        }
        AddFace({{-2, -2, 1}, {2, -2, 1}, {2, 0, 3}, {-2, 0, 3}});
        AddFace({{2, 2, 1}, {-2, 2, 1}, {-2, 0, 3}, {2, 0, 3}});
        for (int side = 0; side < 8; ++side) {
            const double a = (side * 45 + 10) * DegreesToRadians, b = (side * 45 + 55) * DegreesToRadians;
            AddFace({{2 * std::cos(a), 2 * std::sin(a), 0},
                     {2 * std::cos(b), 2 * std::sin(b), 0},
                     {2 * std::cos(b), 2 * std::sin(b), 3},
                     {2 * std::cos(a), 2 * std::sin(a), 3}});
        }
        CleanUpObject();
    }

    /// Calls check(place of the corner in the frame, its bead, the polygon) for every corner.
    template <class Check>
    static void ForEveryCorner(const Matrix& toFrame, Check check) {
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            for (const PolygonBead* bead : EveryBead(polygon)) {
                double place[3];
                TransformCoordinate(bead->Vertex->Position, toFrame, place);
                check(place, bead, polygon);
            }
    }

    /// A frame that is turned and moved.
    static Matrix Turned() {
        Matrix frame;
        MultMatrix(PitchMatrix(30), YawMatrix(50), frame);
        MultMatrix(frame, TranslationMatrix(1, -2, 0.5), frame);
        return frame;
    }

    Texture* TheTexture;
};

TEST_F(Mappings, ThreePointsAgreeWithLinesAndPlanes) {
    AddShapes();
    const double points[3][3] = {{0.5, 1, 0}, {2, 1.5, 0.25}, {0, 3, -1}};
    const Matrix toFrame = Turned();
    ThreePointMap map;
    ASSERT_TRUE(map.Make(points, toFrame));
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        MapThreePoints(polygon, map, toFrame);

    double q[3][3], planeOfU[4], planeOfV[4];
    for (int i = 0; i < 3; ++i)
        TransformCoordinate(points[i], toFrame, q[i]);
    const double u[3] = {q[1][0] - q[0][0], q[1][1] - q[0][1], 0}, v[3] = {q[2][0] - q[0][0], q[2][1] - q[0][1], 0};
    std::copy_n(std::vector{-u[1], u[0], 0.0}.data(), 3, planeOfU);
    std::copy_n(std::vector{-v[1], v[0], 0.0}.data(), 3, planeOfV);
    CalcPlaneD(planeOfU, q[0]);
    CalcPlaneD(planeOfV, q[0]);
    ForEveryCorner(toFrame, [&](const double* place, const PolygonBead* bead, const Polygon* polygon) {
        const double along[2][6] = {{place[0], place[1], place[2], u[0], u[1], 0},
                                    {place[0], place[1], place[2], v[0], v[1], 0}};
        double s, t;
        ASSERT_TRUE(DistanceToPlaneAlongLine(along[0], planeOfV, &s));
        ASSERT_TRUE(DistanceToPlaneAlongLine(along[1], planeOfU, &t));
        EXPECT_NEAR(bead->TexCoord[0], -s, 1e-5);
        EXPECT_NEAR(bead->TexCoord[1], -t, 1e-5);
        EXPECT_EQ(polygon->Texture, TheTexture);
        EXPECT_EQ(polygon->TextureMaterial, CurrentMaterial());
    });
}

TEST_F(Mappings, AFrameWithoutAreaIsRefused) {
    const double thirds[][3] = {{2, 2, 0}, {0, 0, 5}, {0, 0, 0}, {1e-320, 0, 0}, {HUGE_VAL, 1, 0}};
    for (const auto& third : thirds) {
        const double points[3][3] = {{0, 0, 0}, {1, 1, 0}, {third[0], third[1], third[2]}};
        ThreePointMap map;
        EXPECT_FALSE(map.Make(points, IdentityMatrix)) << third[0];
    }
}

TEST_F(Mappings, TheSeamOfACylinderIsCrossedOnce) {
    AddShapes();
    const CylinderMap map = {Turned(), 0.5, 8, 2};
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        MapCylinder(polygon, map);
    constexpr double halfTurn = 180 * DegreesToRadians;
    ForEveryCorner(map.ToAxis, [&](const double* place, const PolygonBead* bead, const Polygon* polygon) {
        bool below = false, above = false;
        for (const PolygonBead* other : EveryBead(polygon)) {
            double p[3];
            TransformCoordinate(other->Vertex->Position, map.ToAxis, p);
            below |= std::atan2(p[1], p[0]) < -halfTurn / 2;
            above |= std::atan2(p[1], p[0]) > halfTurn / 2;
        }
        const double angle = std::atan2(place[1], place[0]);
        const double beyond = below && above && angle < -halfTurn / 2 ? 8 : 0;
        EXPECT_NEAR(bead->TexCoord[0], angle / (2 * halfTurn) * 8 + beyond, 1e-5);
        EXPECT_NEAR(bead->TexCoord[1], place[2] / 0.5 / 2, 1e-5);
    });

    Polygon* onAxis = AddFace({{0, 0, 4}, {1, 0, 4}, {0, 1, 4}});
    MapCylinder(onAxis, {IdentityMatrix, 1, 4, 1});
    ExpectCoordinates(onAxis, {0, 0, 0, 4, 1, 4});
}

TEST_F(Mappings, ProjectionsKeepTheProportionsOfTheImage) {
    AddShapes();
    const Matrix toFrame = Turned();
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        MapPlanar(polygon, toFrame, 0.25);
    ForEveryCorner(toFrame, [](const double* place, const PolygonBead* bead, const Polygon*) {
        EXPECT_NEAR(bead->TexCoord[0], place[0] * 0.25, 1e-5);
        EXPECT_NEAR(bead->TexCoord[1], place[1] * 0.25 * 2, 1e-5);
    });

    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        MapCubic(polygon, toFrame, 0.25);
    ForEveryCorner(toFrame, [&](const double* p, const PolygonBead* bead, const Polygon* polygon) {
        double n[3] = {polygon->Normal[0], polygon->Normal[1], polygon->Normal[2]};
        RotateVector(n, toFrame, n);
        const double x = std::fabs(n[0]), y = std::fabs(n[1]), z = std::fabs(n[2]);
        double u = n[2] > 0 ? p[0] : -p[0], v = p[1];
        if (x > y && x > z) {
            u = n[0] > 0 ? p[1] : -p[1];
            v = p[2];
        } else if (y > x && y > z) {
            u = n[1] > 0 ? -p[0] : p[0];
            v = p[2];
        }
        EXPECT_NEAR(bead->TexCoord[0], u * 0.25, 1e-5);
        EXPECT_NEAR(bead->TexCoord[1], v * 0.25 * 2, 1e-5);
    });
}

TEST_F(Mappings, EqualComponentsTakeTheFaceTowardsZ) {
    Polygon* polygon = AddFace({{0, 0, 0}, {3, 0, 1}, {0, 3, 2}});
    const float equal[3] = {0.7F, 0.7F, 0.1F};
    std::copy_n(equal, 3, polygon->Normal);
    MapCubic(polygon, IdentityMatrix, 1);
    ExpectCoordinates(polygon, {0, 0, 3, 0, 0, 6});
}

TEST_F(Mappings, PaintedQuadsTurnByQuarters) {
    Polygon* quad = AddFace({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    quad->Flags = PolygonGeneratesTexture;
    PaintQuad(quad, 1);
    ExpectCoordinates(quad, {0.99, 0, 0.99, 0.99, 0, 0.99, 0, 0});
    EXPECT_EQ(quad->Flags, PolygonGeneratesTexture);
    EXPECT_EQ(quad->Texture, TheTexture);
}

TEST_F(Mappings, ARectangleIsCoveredOnce) {
    Polygon* wall = AddFace({{1, 5, 1}, {3, 5, 1}, {3, 5, 2}, {1, 5, 2}});
    wall->Flags = PolygonGeneratesTexture;
    CleanUpObject();
    StretchOverPolygon(wall);
    std::vector<double> found = Coordinates(wall);
    double sums[2] = {};
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_TRUE(std::fabs(found[i]) < 1e-6 || std::fabs(found[i] - 1) < 1e-6) << found[i];
        sums[i % 2] += found[i];
    }
    EXPECT_NEAR(sums[0], 2, 1e-6);
    EXPECT_NEAR(sums[1], 2, 1e-6);
    EXPECT_EQ(wall->Flags, 0);
}

TEST_F(Mappings, StripsRunByTheDistanceOfTheirRungs) {
    struct Case {
        const char* What;
        StripMap Map;
        float Aspect;
        double Step; // along the strip, of each unit square
    };

    const Case cases[] = {
        {"as it starts", {}, 1, 0.99},
        {"stretched", {.Stretch = 2}, 1, 0.495},
        {"a wide image", {}, 2, 1.98},
        {"a wide image sideways", {.Sideways = 1}, 2, 0.495},
        {"without width", {.U0 = 0.5F, .U1 = 0.5F}, 1, 0},
    };
    AddGrid(1, 2);
    CleanUpObject();
    std::vector<Polygon*> quads;
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        quads.push_back(polygon);
    std::sort(quads.begin(), quads.end(), [](const Polygon* a, const Polygon* b) {
        return a->Beads->Vertex->Position[0] < b->Beads->Vertex->Position[0];
    });
    SetPolygonSelected(CurrentObject(), quads[0], 1);
    CleanUpObject();
    SelectQstrip(quads[1]);
    for (const Case& strip : cases) {
        SCOPED_TRACE(strip.What);
        TheTexture->Aspect = strip.Aspect;
        quads[1]->Flags = PolygonGeneratesTexture;
        MapStrip(strip.Map);
        EXPECT_EQ(quads[1]->Flags, 0);
        const int along = strip.Map.Sideways ? 0 : 1;
        for (const Polygon* quad : quads)
            for (const PolygonBead* bead : EveryBead(quad)) {
                EXPECT_NEAR(bead->TexCoord[along], bead->Vertex->Position[0] * strip.Step, 1e-5);
                const float across = bead->TexCoord[1 - along];
                EXPECT_TRUE(across == strip.Map.U0 || across == strip.Map.U1);
            }
    }
}

} // namespace
