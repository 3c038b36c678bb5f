#include "interaction/views_test.h"

#include "geometry/vectors.h"
#include "interaction/ruler.h"
#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "support/test_seed.h"
#include "tools/base_polygons.h"
#include "tools/closed_surface.h"
#include "tools/described_model.h"
#include "tools/peak.h"
#include "tools/raise_walls.h"
#include "tools/random_model.h"
#include "tools/sub_polygon_selection.h"
#include "views/grid.h"

#include <cmath>
#include <functional>
#include <random>

namespace {

class Heights : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        CapBottoms = 1;
    }

    void TearDown() override {
        CapBottoms = 0;
        ViewsTest::TearDown();
    }

    static void TypeHeight(double squares) {
        Play("in \"Ruler\"\nfield \"Offset (grid squares):\" \"" + std::to_string(squares).substr(0, 5) + "\"");
    }

    static void SwitchBase() { Button("Close base"); }

    static std::string Object() {
        CleanUpObject();
        CheckIntegrity();
        return DescribeObject();
    }

    /// A star with random arms, often concave, in a random plane; the only polygon, and selected. Returns its area.
    static double AddStar(std::mt19937& random) {
        std::uniform_real_distribution<double> unit(-1, 1);
        ResetStorage();
        Matrix turned;
        MultMatrix(YawMatrix(unit(random) * 180), PitchMatrix(unit(random) * 180), turned);
        MultMatrix(turned, TranslationMatrix(unit(random) * 9, unit(random) * 9, unit(random) * 9), turned);
        PolygonBead* beads = nullptr;
        double sum[3] = {0, 0, 0};
        const int count = 3 + static_cast<int>(random() % 9);
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * M_PI * i / count, reach = 2 + unit(random) * 1.5;
            const double flat[3] = {reach * std::cos(angle), reach * std::sin(angle), 0};
            double place[3];
            TransformCoordinate(flat, turned, place);
            AddPolygonBead(beads, AddVertex(place[0], place[1], place[2]));
        }
        Polygon* star = AddPolygon(beads, nullptr);
        for (const PolygonBead* bead : EveryBead(star))
            AddNewellEdge(bead->Vertex->Position, NextInRing(star, bead)->Vertex->Position, sum);
        SetPolygonSelected(CurrentObject(), star, 1);
        CleanUpObject();
        return LengthOfVector(sum) / 2;
    }
};

struct Shape {
    const char* Name;
    void (*Begin)();
    /// The volume on an area of 1 with a height of 1.
    double Share;
};

const Shape Shapes[] = {{"peak", PeakPolygons, 1.0 / 3}, {"walls", LiftPolygons, 1}};

TEST_F(Heights, ShapesWithABaseAreClosedAndFaceOutward) {
    const unsigned seed = TestSeed();
    std::mt19937 random(seed);
    for (int round = 0; round < 20; ++round)
        for (const Shape& shape : Shapes) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << ", " << shape.Name);
            const double area = AddStar(random), height = 0.5 + static_cast<double>(random() % 8) / 2;
            const std::string before = Object();
            shape.Begin();
            ASSERT_TRUE(RulerGizmoIsOpen());
            TypeHeight(height);
            // What is drawn keeps up.
            CleanUpObject();
            Surface surface = SurfaceOfModel();
            EXPECT_TRUE(surface.IsManifold());
            EXPECT_EQ(surface.EulerCharacteristic(), 2);
            EXPECT_NEAR(surface.Volume(), area * height * OneGridSquare() * shape.Share, 1e-4 * surface.Volume());
            SwitchBase();
            EXPECT_FALSE(SurfaceOfModel().IsClosed());
            const std::size_t open = Polygons();
            SwitchBase();
            EXPECT_EQ(Polygons(), open + 1);
            EXPECT_TRUE(SurfaceOfModel().IsClosed());
            FinishTool();
            Settle();
            EXPECT_FALSE(RulerGizmoIsOpen());
            EXPECT_TRUE(SurfaceOfModel().IsManifold());
            const std::string after = Object();
            Undo();
            EXPECT_EQ(Object(), before);
            Undo();
            EXPECT_EQ(Object(), after);
        }
}

/// Ways to end a run, with the base in the object or out of it.
TEST_F(Heights, RandomModelsComeBackWhenItIsGivenUpOrUndone) {
    const unsigned seed = TestSeed();
    int peaked = 0;
    for (unsigned round = 0; round < 24; ++round)
        for (const Shape& shape : Shapes) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << ", " << shape.Name);
            ResetStorage();
            RandomModel model(seed + round);
            model.SelectSome();
            SelectedSubObject() = FirstSubObject();
            CapBottoms = model.Number(2);
            const std::string before = Object();
            shape.Begin();
            if (!RulerGizmoIsOpen())
                continue; // only polygons with sub-polygons
            ++peaked;
            EXPECT_EQ(SelectedSubObject(), FirstSubObject());
            TypeHeight(model.Number(4));
            if (model.Number(2))
                SwitchBase();
            CleanUpObject();
            switch (round % 4) {
            case 0:
                CancelTool();
                break;
            case 1:
                Play("in \"Ruler\"\nbutton \"Cancel\"");
                break;
            case 2:
                Play("in \"Ruler\"\nclose");
                break;
            default:
                Play("in \"Ruler\"\nbutton \"Done\"");
                EXPECT_NE(Object(), before);
                Undo();
            }
            Settle();
            EXPECT_TRUE(CapList.empty() && RemovedCaps.empty());
            EXPECT_EQ(Object(), before);
        }
    EXPECT_GT(peaked, 24);
}

TEST_F(Heights, PeaksTakeTheLooksOfTheirPolygon) {
    std::mt19937 random(1);
    AddStar(random);
    Polygon* base = FirstPolygon();
    base->Lighting = LightingSmooth;
    base->LightGroup = 7;
    float sum = 0, count = 0;
    for (PolygonBead* bead : EveryBead(base)) {
        sum += bead->TexCoord[0] = count * count;
        ++count;
    }
    PeakPolygons();
    const Vertex* apex = FirstVertex();
    EXPECT_EQ(base->Lighting, LightingFaceted);
    int triangles = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        EXPECT_EQ(polygon->Lighting, LightingFaceted);
        EXPECT_EQ(polygon->LightGroup, 7);
        for (const PolygonBead* bead : EveryBead(polygon))
            if (bead->Vertex == apex) {
                EXPECT_FLOAT_EQ(bead->TexCoord[0], sum / count);
                ++triangles;
            }
    }
    EXPECT_EQ(triangles, static_cast<int>(count));
    TypeHeight(0);
    CleanUpObject();
    EXPECT_EQ(triangles + 1u, Polygons()) << "nothing is lost at height 0";
}

TEST_F(Heights, PolygonsWithSubPolygonsAreNotPeakedAndTheUserIsTold) {
    std::mt19937 random(1);
    AddStar(random);
    Polygon* parent = FirstPolygon();
    PolygonBead* beads = nullptr;
    for (const PolygonBead* bead : EveryBead(parent))
        AddPolygonBead(beads, bead->Vertex);
    AddPolygon(beads, parent);
    CleanUpObject();
    PeakPolygons();
    Settle();
    EXPECT_FALSE(RulerGizmoIsOpen());
    ASSERT_NE(MessageWindow, nullptr);
    Play(std::string("in \"") + MessageWindow->Title + "\"\nbutton \"Continue\"");
    EXPECT_EQ(Polygons(), 2u);
    // With one that can be peaked beside it, that one is.
    PolygonBead* others = nullptr;
    for (const double x : {0, 1, 2})
        AddPolygonBead(others, AddVertex(x, x * x, 50));
    SetPolygonSelected(CurrentObject(), AddPolygon(others, nullptr), 1);
    CleanUpObject();
    PeakPolygons();
    Settle();
    EXPECT_TRUE(RulerGizmoIsOpen());
    EXPECT_NE(MessageWindow, nullptr) << "a warning that one was left alone";
    EXPECT_FALSE(parent->Selected);
    EXPECT_EQ(Polygons(), 2u + 4u);
}

TEST_F(Heights, DecalsAreLiftedWithTheirPolygon) {
    std::mt19937 random(3);
    AddStar(random);
    Polygon* parent = FirstPolygon();
    PolygonBead* beads = nullptr;
    for (const PolygonBead* bead : EveryBead(parent))
        AddPolygonBead(beads, bead->Vertex); // on the parent's own corners, which stay below
    Polygon* decal = AddPolygon(beads, parent);
    CleanUpObject();
    const std::size_t corners = Vertices();
    LiftPolygons();
    TypeHeight(2);
    EXPECT_EQ(Vertices(), 3 * corners);
    EXPECT_EQ(decal->Parent, parent);
    const PolygonBead* below = parent->Beads;
    for (const PolygonBead* bead : EveryBead(decal)) {
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_DOUBLE_EQ(bead->Vertex->Position[axis], below->Vertex->Position[axis]);
        below = below->Next;
    }
}

} // namespace
