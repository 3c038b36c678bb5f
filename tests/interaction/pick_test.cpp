#include "interaction/selection_passes.h"
#include "interaction/selection_test.h"
#include "store/work_polygons.h"

#include <cmath>

namespace {

using PickTest = SelectionTest;

TEST_F(PickTest, NeedsTheRowToCrossTheOutlineTwiceWithThePointerStrictlyBetween) {
    // From pixel 200 to 240 and from row 150 to 180.
    Polygon* square = Upright(0, 4, 0, 3, 0);
    // A "u" from pixel 100 to 160, open at the top above row 170.
    Polygon* cup =
        AddFace({{-10, 0, 0}, {-4, 0, 0}, {-4, 0, 6}, {-6, 0, 6}, {-6, 0, 2}, {-8, 0, 2}, {-8, 0, 6}, {-10, 0, 6}});

    const struct {
        const char* Name;
        int X, Y;
        Polygon* Hit;
    } cases[] = {
        {"middle", 220, 165, square},
        {"just inside the left edge", 201, 165, square},
        {"on the left edge", 200, 165, nullptr},
        {"on the right edge", 240, 165, nullptr},
        {"just inside the bottom", 220, 151, square},
        {"on the bottom edge", 220, 150, nullptr},
        {"outside", 250, 165, nullptr},
        {"the cup's bottom", 130, 160, cup},
        {"between its walls", 130, 190, nullptr},
        {"in a wall, where the row crosses four edges", 110, 190, nullptr},
    };

    for (const auto& row : cases) {
        SCOPED_TRACE(row.Name);
        EXPECT_EQ(PickAt(FrontView(), row.X, row.Y), row.Hit);
    }
}

TEST_F(PickTest, TakesTheNearestAndOfOnePlaneTheNarrowest) {
    Polygon* far = Upright(0, 2, 0, 3, 5);
    Polygon* near = Upright(0, 4, 0, 3, 1);
    EXPECT_EQ(PickAt(FrontView(), 210, 165), near) << "nearer counts before narrower";
    EXPECT_NE(far, near);

    Polygon* decal = Upright(2.5, 3.5, 1, 2, 1, near);
    EXPECT_EQ(PickAt(FrontView(), 230, 165), decal);
    EXPECT_EQ(PickAt(FrontView(), 238, 165), near);

    // Numbers a little off the plane through the origin.
    Upright(-4, 0, 0, 3, 1e-12);
    Polygon* roundedDecal = Upright(-3, -1, 1, 2, 2e-12);
    EXPECT_EQ(PickAt(FrontView(), 180, 165), roundedDecal);
}

TEST_F(PickTest, LooksThroughBacksWhenTheyAreNotShown) {
    Polygon* front = Upright(0, 4, 0, 3, 2);
    Polygon* back = AddFace({{0, 1, 0}, {0, 1, 3}, {4, 1, 3}, {4, 1, 0}});
    EXPECT_EQ(PickAt(FrontView(), 220, 165), back);
    Backface = 1;
    EXPECT_EQ(PickAt(FrontView(), 220, 165), front);

    View view = FrontView();
    MouseX = MouseY = 0; // not under the pointer
    BackfaceCheck(&view, front);
    EXPECT_EQ(front->Mark, 0);
    BackfaceCheck(&view, back);
    EXPECT_EQ(back->Mark, 1);
    Backface = 0;
    BackfaceCheck(&view, back);
    EXPECT_EQ(back->Mark, 1) << "whether or not backs are shown";
}

TEST_F(PickTest, CutsOffWhatLiesBehindTheEye) {
    // A floor that runs from behind the eye to far before it.
    Polygon* floor = AddFace({{-50, -50, 0}, {50, -50, 0}, {50, 100, 0}, {-50, 100, 0}});
    EXPECT_EQ(PickAt(EyeView(0, 0, 2), 200, 100), floor);
    EXPECT_EQ(PickAt(EyeView(0, 0, 2), 10, 5), floor);
    EXPECT_EQ(PickAt(EyeView(0, 0, 2), 200, 155), nullptr) << "above the horizon";
    EXPECT_EQ(PickAt(EyeView(0, 200, 2), 200, 100), nullptr) << "all of it is behind";
    SetDragBox(0, 400, 0, 50);
    View view = EyeView(0, 0, 2);
    BoxPolygons(&view);
    EXPECT_EQ(floor->Selected, 1);
}

TEST_F(PickTest, TellsDistancesApartWithTheEyeAmidTheModel) {
    Upright(-100, 100, -100, 100, 300);
    Polygon* behind = Upright(-1, 1, -1, 1, 250);
    Polygon* wall = Upright(-90, 90, -90, 90, 220);
    EXPECT_EQ(PickAt(EyeView(0, 0.5, 0), 200, 151), wall);
    DeletePolygon(wall, 1);
    EXPECT_EQ(PickAt(EyeView(0, 0.5, 0), 200, 151), behind);
}

TEST_F(PickTest, TakesWhatIsSeenOfThingsThatAlmostTouch) {
    // A board before a narrower one, in a large model that the eye is amid: a bulb behind its glass, a hedge before a
    // house.
    Upright(-100, 100, -100, 100, 300);
    Polygon* board = Upright(-4, 4, -4, 4, 30);
    Polygon* behind = Upright(-1, 1, -1, 1, 30.15);
    EXPECT_EQ(PickAt(EyeView(0, 0.5, 0), 201, 151), board);
    DeletePolygon(behind, 1);
    Polygon* onIt = Upright(-1, 1, -1, 1, 30.003);
    EXPECT_EQ(PickAt(EyeView(0, 0.5, 0), 201, 151), onIt);
}

TEST_F(PickTest, FindsWhatTheLevelAndTheStructureEditorShow) {
    SubObject* shown = SelectedSubObject();
    SelectedLod();
    Polygon* polygon = Upright(0, 4, 0, 3, 2);
    SubObject* other = AddSubObject("Other");
    Upright(0, 4, 0, 3, 1); // on no level
    EXPECT_EQ(PickAt(FrontView(), 220, 165), polygon);
    LodBead* bead = SelectedLod()->FirstBead;
    ASSERT_EQ(bead->SubObject, shown);
    bead->Shown = 0;
    StructureEditorIsOpen = HideSubObjects = 1;
    EXPECT_EQ(PickAt(FrontView(), 220, 165), nullptr);
    bead->SubObject = other;
    bead->Shown = 1;
    EXPECT_EQ(PickAt(FrontView(), 220, 165), other->FirstPolygon);
}

TEST_F(PickTest, FollowsEdits) {
    Polygon* polygon = Upright(0, 4, 0, 3, 2);
    EXPECT_EQ(PickAt(FrontView(), 220, 165), polygon);
    for (const PolygonBead* bead : EveryBead(polygon))
        bead->Vertex->Position[0] += 10;
    NormalsOK() = 0;
    EXPECT_EQ(PickAt(FrontView(), 220, 165), nullptr);
    EXPECT_EQ(PickAt(FrontView(), 320, 165), polygon);
    Polygon* before = Upright(10, 14, 0, 3, 1);
    EXPECT_EQ(PickAt(FrontView(), 320, 165), before);
    DeletePolygon(before, 1);
    DeletePolygon(polygon, 1);
    EXPECT_EQ(PickAt(FrontView(), 320, 165), nullptr);
}

TEST_F(PickTest, TakesTheNearestVertexWithinTenPixels) {
    Vertex* loose = AddVertex(0, 0, 0); // at 200, 150
    EXPECT_EQ(PickVertexAt(FrontView(), 209, 150), loose);
    EXPECT_EQ(PickVertexAt(FrontView(), 210, 150), nullptr) << "ten pixels off";
    EXPECT_EQ(PickVertexAt(FrontView(), 206, 158), nullptr) << "ten pixels off";
    EXPECT_EQ(PickVertexAt(FrontView(), 206, 157), loose);
    Vertex* nearer = AddVertex(0.3, 0, 0);
    EXPECT_EQ(PickVertexAt(FrontView(), 203, 150), nearer);
    Vertex* deeper = AddVertex(0.3, 4, 0);
    AddVertex(0.3, 2, 0);
    EXPECT_EQ(PickVertexAt(FrontView(), 202, 151), deeper) << "of the same distance the deepest";
    EXPECT_EQ(PickVertexAt(EyeView(0, 5, 0), 200, 150), nullptr) << "behind the eye";
}

class ScenePickTest : public SelectionTest {
  protected:
    void SetUp() override {
        SelectionTest::SetUp();
        Square = Upright(0, 4, 0, 3, 0);
        CleanUpObject();
        ObjectIsolated = 0;
        Scene();
    }

    Branch* Place(double x, double y, double z) {
        Branch* branch = AddBranch(Scene(), BranchAsChild);
        branch->Object = CurrentObject();
        branch->Transform = TranslationMatrix(x, y, z);
        SceneChangedSize = 1;
        return branch;
    }

    Polygon* Square = nullptr;
};

TEST_F(ScenePickTest, FindsTheBranchItsPlaceAndThePolygonInTheScene) {
    Branch* far = Place(0, 3, 0);
    Branch* left = Place(-10, 1, 2);
    View view = FrontView();
    MouseX = 220;
    MouseY = 165;
    EXPECT_EQ(SelectSingleObject(&view), CurrentObject());
    EXPECT_EQ(ClickedBranch, far);
    MouseX = 120;
    MouseY = 190;
    EXPECT_EQ(SelectSingleObject(&view), CurrentObject());
    EXPECT_EQ(ClickedBranch, left);
    EXPECT_EQ(ClickedBranchMatrix[3][0], -10);

    const WorkPoly* polygon = SelectScenePolygon(&view);
    ASSERT_NE(polygon, nullptr);
    std::vector<std::vector<double>> corners;
    for (const WorkPolyBead* bead = polygon->FirstBead; bead; bead = bead->Next)
        corners.push_back({bead->Position[0], bead->Position[1], bead->Position[2]});
    EXPECT_EQ(corners, (std::vector<std::vector<double>>{{-10, 1, 2}, {-6, 1, 2}, {-6, 1, 5}, {-10, 1, 5}}));
    FreeSceneSelectPoly();

    MouseX = 100;
    MouseY = 170;
    const Vertex* corner = SelectSingleVertex(&view);
    ASSERT_NE(corner, nullptr);
    EXPECT_EQ(corner->Position[0], -10);
    EXPECT_EQ(corner->Position[2], 2);

    MouseX = 300;
    EXPECT_EQ(SelectSingleObject(&view), nullptr);
    EXPECT_EQ(ClickedBranch, nullptr);
    EXPECT_EQ(SelectScenePolygon(&view), nullptr);
    EXPECT_EQ(SelectSingleVertex(&view), nullptr);

    left->Visible = 0;
    HideScene = 1;
    MouseX = 120;
    MouseY = 190;
    EXPECT_EQ(SelectSingleObject(&view), nullptr);
}

TEST_F(ScenePickTest, FindsOnlyWhatTheWorkAreaShows) {
    Branch* branch = Place(0, 0, 0);
    branch->Min[0] = branch->Min[1] = branch->Min[2] = -1;
    branch->Max[0] = branch->Max[1] = branch->Max[2] = 5;
    Window gizmo{};
    WorkAreaGizmo = &gizmo;
    WorkAreaRecord& area = CurrentWorkArea();
    area.Magnification = 1;
    area.HalfSize = 2;
    View view = FrontView();
    MouseX = 210;
    MouseY = 165;
    EXPECT_NE(SelectSingleObject(&view), nullptr);
    MouseX = 230;
    EXPECT_EQ(SelectSingleObject(&view), nullptr) << "beyond the cube's right face";
}

TEST_F(ScenePickTest, BoxesChangeABranchOnce) {
    Upright(0, 4, 3, 6, 0);
    Upright(0, 4, 6, 9, 0);
    Branch* branch = Place(0, 0, 0);
    View view = FrontView();
    SetDragBox(210, 230, 152, 230);
    LeftShift = 1;
    BoxPolygons(&view);
    EXPECT_EQ(branch->Selected, 1);
    branch->Copied = 0;
    BoxPolygons(&view);
    EXPECT_EQ(branch->Selected, 0);
}

} // namespace
