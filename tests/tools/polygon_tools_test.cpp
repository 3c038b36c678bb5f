#include "interaction/views_test.h"

#include "platform/events.h"
#include "platform/system.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/new_vertices.h"
#include "store/structure_editing.h"
#include "tools/grid_points.h"
#include "tools/n_gons.h"
#include "tools/polygon_entry.h"
#include "tools/polygon_tools.h"
#include "views/display_flags.h"
#include "views/status_line.h"

#include <cmath>

namespace {

constexpr int Top = 0, Front = 4;

class PolygonTools : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        HideVertices = 0;
        CircleSides = 4;
        Show(Top);
    }

    /// The pixel where a point of the ground plane appears in the Top view.
    static std::string Ground(double x, double y) {
        const double pixelsPerUnit = Shown().Projection[0][0] * Width() / 2.0 * Shown().Zoom;
        return At(static_cast<int>(std::lround(Width() / 2.0 + x * pixelsPerUnit)),
                  static_cast<int>(std::lround(Height() / 2.0 + y * pixelsPerUnit)));
    }

    static std::string ClickGround(double x, double y) { return "click left" + Ground(x, y) + "\n"; }

    static std::string Triangle(double x) {
        return ClickGround(x, 0) + ClickGround(x + 2, 0) + ClickGround(x + 1, 2) + "key Return\n";
    }

    static void ExpectToolIsOver() {
        Settle();
        EXPECT_FALSE(SystemBusy() || ToolBarActive());
        EXPECT_TRUE(PolyVertexList.empty());
        EXPECT_EQ(NewVertices, nullptr);
        CheckIntegrity();
    }

    /// A closed message box would otherwise stay in the way.
    static bool WasTold() {
        if (!MessageWindow)
            return false;
        Play(std::string("in \"") + MessageWindow->Title + "\"\nbutton \"Continue\"");
        return true;
    }
};

TEST_F(PolygonTools, FreehandMakesPolygonsThatFaceTheUser) {
    CreatePolysFreehand();
    // Clockwise in this view: it has to be turned over.
    InView(ClickGround(0, 0) + ClickGround(0, 3) + ClickGround(3, 0) + "key Return\n" + Triangle(4));
    EXPECT_EQ(Polygons(), 2u);
    EXPECT_EQ(Vertices(), 6u);
    Button("Done");
    ExpectToolIsOver();
    CleanUpObject();
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        EXPECT_NEAR(polygon->Normal[2], 1, 1e-5);
        EXPECT_EQ(polygon->Material, CurrentMaterial());
        EXPECT_EQ(polygon->SubObject, SelectedSubObject());
    }
    Undo();
    EXPECT_EQ(Polygons() + Vertices(), 0u);
}

TEST_F(PolygonTools, VerticesFollowThePointerWhileTheButtonIsHeld) {
    CreatePolysFreehand();
    InView("drag left" + Ground(1, 1) + Ground(3, 2) + "\n");
    ASSERT_EQ(PolyVertexList.size(), 1u);
    const double* place = PolyVertexList.front().Vertex->Position;
    EXPECT_NEAR(place[0], 3, 0.1);
    EXPECT_NEAR(place[1], 2, 0.1);
    EXPECT_NEAR(place[2], 0, 1e-9);
    Button("Cancel");
    ExpectToolIsOver();
    EXPECT_EQ(Vertices(), 0u);
}

TEST_F(PolygonTools, AClickOnTheFirstVertexCompletes) {
    CreatePolysFreehand();
    InView(ClickGround(0, 0) + ClickGround(3, 0));
    const auto* status = StatusList;
    // One that is entered already, but not first, changes nothing.
    InView(ClickGround(3, 0) + ClickGround(0, 3));
    EXPECT_EQ(PolyVertexList.size(), 3u);
    EXPECT_NE(StatusList, status);
    InView(ClickGround(0, 0));
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(StatusList, status);
    // The next polygon shares vertices with it.
    InView(ClickGround(0, 0) + ClickGround(3, 0) + ClickGround(2, -3) + "key Return\n");
    EXPECT_EQ(Polygons(), 2u);
    EXPECT_EQ(Vertices(), 4u);
}

TEST_F(PolygonTools, FewerThanThreeSidesAreNoPolygon) {
    CreatePolysFreehand();
    InView(ClickGround(0, 0) + ClickGround(3, 0) + "key Return\n");
    EXPECT_TRUE(WasTold());
    EXPECT_EQ(Polygons() + Vertices(), 0u);
    EXPECT_TRUE(PolyVertexList.empty());
    EXPECT_EQ(NewVertices, nullptr);
    // Nothing entered: nothing to tell.
    InView("key Return\n");
    EXPECT_FALSE(WasTold());
}

TEST_F(PolygonTools, BackspaceTakesBackVerticesThenPolygons) {
    AddPolygon(
        [] {
            PolygonBead* beads = nullptr;
            for (const double x : {-6.0, -5.0, -4.0})
                AddPolygonBead(beads, AddVertex(x, x == -5 ? -3 : -4, 0));
            return beads;
        }(),
        nullptr);
    CreatePolysFreehand();
    InView(Triangle(0) + Triangle(3) + ClickGround(-3, 0) + ClickGround(-3, 2));
    EXPECT_EQ(Polygons(), 3u);
    InView("key Backspace Backspace\n");
    EXPECT_TRUE(PolyVertexList.empty());
    EXPECT_EQ(Polygons(), 3u);
    Button("Delete last");
    EXPECT_EQ(Polygons(), 2u);
    EXPECT_EQ(Vertices(), 6u);
    // It stops at those of this run. The pointer is still on the button.
    Play("key Backspace Backspace Backspace");
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(Vertices(), 3u);
    CheckIntegrity();
}

TEST_F(PolygonTools, BackspaceLeavesVerticesThatWereThereBefore) {
    for (const double x : {-4.0, 0.0, 4.0})
        AddVertex(x, x == 0 ? 3 : -3, 0);
    CreatePolysFreehand();
    InView(ClickGround(-4, -3) + ClickGround(4, -3) + ClickGround(4, 3) + ClickGround(0, 3) + "key Return\n");
    EXPECT_EQ(Vertices(), 4u);
    EXPECT_EQ(Polygons(), 1u);
    InView("key Backspace\n");
    EXPECT_EQ(Polygons(), 0u);
    EXPECT_EQ(Vertices(), 3u);
}

TEST_F(PolygonTools, CornersInOneLineAreNoPolygon) {
    CreatePolysFreehand();
    InView(ClickGround(-4, 0) + ClickGround(-3, 0) + ClickGround(-2, 0) + "key Return\n");
    EXPECT_TRUE(WasTold());
    EXPECT_EQ(Polygons() + Vertices(), 0u);
    EXPECT_FALSE(ToolHasChanged());
}

TEST_F(PolygonTools, CancelTakesBackTheWholeRun) {
    AddVertex(-8, -8, 0);
    CreatePolysFreehand();
    InView(Triangle(0) + Triangle(3) + ClickGround(-3, 0));
    Button("Cancel");
    ExpectToolIsOver();
    EXPECT_EQ(Polygons(), 0u);
    EXPECT_EQ(Vertices(), 1u);
    EXPECT_EQ(ShowVertices, 0);
}

TEST_F(PolygonTools, ConnectingUsesExistingVerticesOnly) {
    for (const auto& place : {std::pair{0, 0}, {4, 0}, {4, 4}, {0, 4}})
        AddVertex(place.first, place.second, 0);
    CreatePolysByConnecting();
    EXPECT_EQ(ShowVertices, 1);
    const long rings = gl::RingsHeard();
    InView(ClickGround(2, 2));
    EXPECT_EQ(gl::RingsHeard(), rings + 1);
    EXPECT_TRUE(PolyVertexList.empty());
    InView(ClickGround(0, 0) + ClickGround(4, 0) + ClickGround(4, 4) + ClickGround(0, 4) + ClickGround(0, 0));
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(Vertices(), 4u);
    InView("key Space\n");
    ExpectToolIsOver();
    EXPECT_EQ(ShowVertices, 0);
}

TEST_F(PolygonTools, PolygonsNeedAnObjectAndALevelWithSubObjects) {
    AddLod("Empty");
    CreatePolysFreehand();
    EXPECT_TRUE(WasTold());
    EXPECT_FALSE(SystemBusy());
    CreateCircularPolys();
    EXPECT_TRUE(WasTold());
    ObjectIsolated = 0;
    CreatePolysByConnecting();
    EXPECT_TRUE(WasTold());
    EXPECT_FALSE(SystemBusy());
}

TEST_F(PolygonTools, NGonsGoFromTheirMiddleToTheLastCorner) {
    CircleSides = 5;
    CreateCircularPolys();
    InView("drag left" + Ground(1, 1) + Ground(5, 1) + "\n");
    ASSERT_EQ(Polygons(), 1u);
    ASSERT_EQ(Vertices(), 5u);
    CleanUpObject();
    const Polygon* polygon = FirstPolygon();
    EXPECT_NEAR(polygon->Normal[2], 1, 1e-5);
    double nearest = HUGE_VAL;
    for (const Vertex* vertex : EveryVertex(CurrentObject())) {
        EXPECT_NEAR(std::hypot(vertex->Position[0] - 1, vertex->Position[1] - 1), 4, 0.2);
        EXPECT_NEAR(vertex->Position[2], 0, 1e-9);
        nearest = std::min(nearest, std::hypot(vertex->Position[0] - 5, vertex->Position[1] - 1));
    }
    EXPECT_LT(nearest, 0.2);
    const double side = 2 * 4 * std::sin(std::acos(-1) / 5);
    for (const PolygonBead* bead : EveryBead(polygon)) {
        const double *a = bead->Vertex->Position, *b = NextInRing(polygon, bead)->Vertex->Position;
        EXPECT_NEAR(std::hypot(a[0] - b[0], a[1] - b[1]), side, 0.2);
    }
    Button("Cancel");
    ExpectToolIsOver();
    EXPECT_EQ(Polygons() + Vertices(), 0u);
}

TEST_F(PolygonTools, AnNGonWithoutSizeIsDraggedOnUntilAClickOrEscape) {
    CreateCircularPolys();
    InView("click left" + Ground(1, 1) + "\nmove" + Ground(3, 1) + "\nclick left" + Ground(4, 1) + "\n");
    EXPECT_EQ(Polygons(), 1u);
    InView("click left" + Ground(-5, 1) + "\nmove" + Ground(-3, 1) + "\nkey Escape\n");
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(NewVertices, nullptr);
    InView("key Backspace Backspace\nkey Space\n");
    ExpectToolIsOver();
    EXPECT_EQ(Polygons() + Vertices(), 0u);
}

TEST_F(PolygonTools, AxesAcrossA2dViewStayWhenAPointIsDragged) {
    Show(Front);
    double point[3] = {0, 7, 0};
    static double* dragged;
    dragged = point;
    LeftClickFunc = [](View* shown) { DragCoordAroundGrid(shown, dragged, gl::LEFTMOUSE, nullptr); };
    InView("drag left" + Ground(0, 0) + Ground(2, 3) + "\n");
    EXPECT_NEAR(point[0], 2, 0.1);
    EXPECT_EQ(point[1], 7);
    EXPECT_NEAR(point[2], 3, 0.1);
}

} // namespace
