// Views show the scene: levels by distance, billboards, boxes, what is placed where, and the work area.
#include "views/view_test.h"

#include "geometry/matrices.h"
#include "store/accessors.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "views/capabilities.h"
#include "views/culling.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/kept_drawings.h"
#include "views/moves.h"
#include "views/scene_views.h"
#include "views/traversal.h"
#include "views/work_area.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr std::uint32_t Red = 0xFF, Green = 0xFF00, Blue = 0xFF0000, White = 0xFFFFFF;
constexpr int Top = 0, Front = 4;

class SceneDrawing : public ViewTest {
  protected:
    void SetUp() override {
        ViewTest::SetUp();
        ObjectIsolated = 0;
    }

    static Branch* Put(Object* object, const Matrix& transform) {
        Branch* branch = AddBranch(Scene(), BranchAsChild);
        branch->Object = object;
        branch->Transform = transform;
        SceneChangedSize = 1;
        return branch;
    }

    /// An object of one colour for each level of detail, nearest first, as cubes of one metre.
    static Object* WithLevels(const std::vector<std::pair<double, std::uint32_t>>& levels) {
        Object* object = AddObject("Levels", 0, 0);
        SelectedLod();
        AddCube(0.5, AddGlow(levels.front().second));
        SelectedLod()->Distance = levels.front().first;
        for (std::size_t i = 1; i < levels.size(); ++i) {
            AddSubObject("More");
            SubObject* subObject = SelectedSubObject();
            AddCube(0.5, AddGlow(levels[i].second));
            AddLod("Further");
            AddLodBead(subObject);
            SelectedLod()->Distance = levels[i].first;
        }
        return object;
    }
};

TEST_F(SceneDrawing, SwitchesLevelsByDistanceIn3D) {
    Put(WithLevels({{10, Red}, {20, Green}}), IdentityMatrix);
    View& view = LookFrom(Direction3D, 3);
    const auto colours = [&](double distance) {
        view.ViewMatrix[3][1] = distance;
        Draw(view);
        return std::array{Count(Red) > 0, Count(Green) > 0};
    };
    EXPECT_EQ(colours(9.99), (std::array{true, false}));
    EXPECT_EQ(colours(10.01), (std::array{false, true}));
    EXPECT_EQ(colours(19.9), (std::array{false, true}));
    EXPECT_EQ(colours(20.1), (std::array{false, false})) << "too far away";
    Draw(LookFrom(Front, 3));
    EXPECT_GT(Count(Red), 0) << "2D views show the first level";
    FirstLod()->Distance = 0.001;
    Draw(LookFrom(Front, 3));
    EXPECT_GT(Count(Red), 0);
}

TEST_F(SceneDrawing, TurnsBillboardsToTheEye) {
    Object* object = AddObject("Tree", 0, 0);
    AddFront(0, 0, 0, 1, AddGlow(Green));
    object->Attributes |= ObjectIsBillboard;
    Put(object, IdentityMatrix);
    View& view = LookFrom(Direction3D, 3);
    view.ViewMatrix = TranslationMatrix(0, 12, 0);
    Backface = 1;
    long faceOn = 0;
    for (const double yaw : {0.0, 30.0, 90.0, 155.0, 200.0, 300.0}) {
        View turned = view;
        MultMatrix(YawMatrix(yaw), view.ViewMatrix, turned.ViewMatrix);
        Draw(turned);
        if (!faceOn)
            faceOn = Count(Green);
        EXPECT_NEAR(static_cast<double>(Count(Green)), static_cast<double>(faceOn), 0.02 * static_cast<double>(faceOn))
            << yaw;
    }
    EXPECT_GT(faceOn, 3000);
    ShowVertices = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 4 * 8) << "markers at its corners";
    View aside = view;
    MultMatrix(YawMatrix(30), view.ViewMatrix, aside.ViewMatrix);
    Draw(aside);
    EXPECT_EQ(Count(White), 4 * 8) << "turned";
    ShowVertices = 0;
    Draw(LookFrom(Top, 3));
    EXPECT_EQ(Count(Green), 0) << "from above it is an edge";
    object->Attributes = 0;
    View across = view;
    MultMatrix(YawMatrix(90), view.ViewMatrix, across.ViewMatrix);
    Draw(across);
    EXPECT_EQ(Count(Green), 0) << "not a billboard: seen along its plane";
}

TEST_F(SceneDrawing, ShowsFrontsOfMirroredObjects) {
    Backface = 1;
    Object* object = AddObject("Wall", 0, 0);
    AddFront(0, 0, 0, 1, AddGlow(Green));
    Branch* branch = Put(object, ScaleMatrix(-1, 1, 1));
    Draw(LookFrom(Front, 3));
    EXPECT_GT(Count(Green), 0);
    Draw(LookFrom(5, 3));
    EXPECT_EQ(Count(Green), 0) << "from behind";
    branch->Transform = IdentityMatrix;
    Draw(LookFrom(Front, 3));
    EXPECT_GT(Count(Green), 0);
}

TEST_F(SceneDrawing, PlacesBranchesByTheirOwnTransformAlone) {
    Object* object = WithLevels({{1000, Red}});
    Branch* parent = Put(object, TranslationMatrix(-2, 0, 0));
    Branch* child = AddBranch(parent, BranchAsChild);
    child->Object = object;
    child->Transform = TranslationMatrix(2, 0, 0);
    SceneChangedSize = 1;
    View& view = LookFrom(Front, 5);
    Draw(view);
    EXPECT_EQ(Pixel(Width / 2 - 60, Height / 2), Red);
    EXPECT_EQ(Pixel(Width / 2 + 60, Height / 2), Red);
    EXPECT_EQ(Pixel(Width / 2, Height / 2), Background);
    parent->Visible = 0;
    Draw(view);
    EXPECT_EQ(Pixel(Width / 2 - 60, Height / 2), Red) << "nothing is hidden";
    HideScene = 1;
    Draw(view);
    EXPECT_EQ(Count(Red), 0) << "with its subtree";
    parent->Visible = 1;
    child->Visible = 0;
    Draw(view);
    EXPECT_EQ(Pixel(Width / 2 - 60, Height / 2), Red);
    EXPECT_EQ(Pixel(Width / 2 + 60, Height / 2), Background);
    EXPECT_EQ(CurrentObject(), object) << "the current object is as before";
}

TEST_F(SceneDrawing, BoxesStandForObjectsThatMoveAndMarkThoseSelected) {
    Branch* branch = Put(WithLevels({{1000, Red}}), ScaleMatrix(2, 2, 2));
    View& view = LookFrom(Front, 3);
    Moving = MoveWire = 1;
    Draw(view);
    Keep("boxes");
    EXPECT_EQ(Count(Red), 0);
    EXPECT_EQ(Row(145, 150, 10), "....#.....");
    Moving = 0;
    branch->Selected = 1;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(White)), 0, 0) << "scene selection is off";
    NoSceneSelection = 0;
    Draw(view);
    EXPECT_NEAR(static_cast<double>(Count(White)), 4 * 100, 4) << "a box marks what is selected";
    EXPECT_EQ(Row(146, 150, 8), "...#.RRR") << "with a dark halo";
    SelectionsSolid = 1;
    Draw(view);
    EXPECT_EQ(Count(White), 0);
    EXPECT_GT(Count(Red), 9000) << "the selected object is filled";
    branch->Selected = 0;
    Draw(view);
    EXPECT_EQ(Count(Red), 0) << "others are outlines";
    EXPECT_GT(Count(White), 300);
}

TEST_F(SceneDrawing, CullingTakesAwayNothingThatIsSeen) {
    Object* object = WithLevels({{1e6, Red}});
    for (int i = 0; i < 200; ++i) {
        Matrix placed = YawMatrix(i * 13);
        MultMatrix(placed, TranslationMatrix(i % 15 * 3 - 20, i / 15 * 3 - 20, i % 4 - 2), placed);
        Put(object, placed);
    }

    class CountInView : public TraversalSink {
      public:
        CountInView() : TraversalSink(Drawing) {}

        void TakeObject(const ShownObject& shown) override {
            ++Offered;
            if (BoxIsInView(shown.View, shown.ToEye, shown.Object->Min, shown.Object->Max)) {
                ++Seen;
                return;
            }
            for (const Vertex* vertex : EveryVertex(shown.Object)) {
                double eye[3];
                TransformPoint(vertex->Position, shown.ToEye, eye);
                const double w = shown.View->Perspective ? -eye[2] : 1;
                SeenAnyhow += w > 0 && std::abs(eye[0] * shown.View->Projection[0][0]) < w &&
                              std::abs(eye[1] * shown.View->Projection[1][1]) < w;
            }
        }

        int Offered = 0, Seen = 0, SeenAnyhow = 0; // the last: vertices in view of objects that are not
    };

    for (const int direction : {Top, Front, static_cast<int>(Direction3D)})
        for (const double shift : {0.0, 9.0, 17.0}) {
            View& view = LookFrom(direction, 5);
            MultMatrix(TranslationMatrix(shift, -shift, 0), view.ViewMatrix, view.ViewMatrix);
            Draw(view);
            CountInView count;
            TraverseView(&view, count);
            EXPECT_EQ(count.Offered, 200);
            EXPECT_LT(count.Seen, 150);
            EXPECT_EQ(count.SeenAnyhow, 0) << direction << ' ' << shift;
        }
}

/// Puts the work area in force for the length of a scope.
class WorkAreaInForce {
  public:
    WorkAreaInForce() { WorkAreaGizmo = &Gizmo; }

    ~WorkAreaInForce() { WorkAreaGizmo = nullptr; }

  private:
    Window Gizmo = {};
};

TEST_F(SceneDrawing, TheWorkAreaIsCutOutWithClipPlanesAndWithout) {
    Object* object = AddObject("Shapes", 0, 0);
    AddCube(1, AddGlow(Red));
    Polygon* wall = AddFace({{-3, 0.2, -2}, {3, 0.5, -2.5}, {2.5, -0.3, 2.8}}, AddGlow(Green));
    AddFace({{-1, 0.25, -1}, {1.2, 0.35, -1.2}, {1, -0.1, 1}}, AddGlow(Blue), wall);
    for (Polygon* polygon = FirstPolygon(); polygon; polygon = polygon->Next)
        polygon->Lighting = polygon->Flags & PolygonIsSub ? LightingSmooth : LightingFaceted;
    Matrix placed = YawMatrix(25);
    MultMatrix(placed, TranslationMatrix(0.3, 0.2, 0.1), placed);
    Put(object, placed);
    for (const int isolated : {0, 1})
        for (const int solid : {1, 0})
            for (const int backface : {0, 1})
                for (const int direction : {Front, static_cast<int>(Direction3D)}) {
                    ObjectIsolated = isolated;
                    SolidView = solid;
                    Backface = backface;
                    const WorkAreaInForce inForce;
                    View& view = LookFrom(direction, 4);
                    WorkAreaRecord& area = CurrentWorkArea();
                    area = {1, 1, {0.2, -0.1, 0.3}, 2, 1.1};
                    gl::Picture pictures[2];
                    for (const int planes : {0, 1}) {
                        ClipPlanesAvailable = planes;
                        Draw(view);
                        EXPECT_EQ(SpecialDraw, !planes);
                        pictures[planes] = Shown();
                    }
                    if (isolated == 0 && solid && !backface)
                        Keep("area" + std::to_string(direction));
                    const long differing = gl::DifferingPixels(pictures[0], pictures[1], 2, nullptr);
                    // Filled shapes may differ along their edges; cut outlines are closed along the cut in software.
                    EXPECT_LT(differing, solid ? 60 : 2500)
                        << isolated << ' ' << solid << ' ' << backface << ' ' << direction;
                    if (solid) {
                        EXPECT_GT(Count(Red) + Count(Green) + Count(Blue), 5000);
                    }
                }
}

} // namespace
