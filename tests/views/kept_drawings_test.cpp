// Kept drawings are never out of date, are recorded anew only where something has changed, and are given back.
#include "views/view_test.h"

#include "materials/material_definitions.h"
#include "platform/recordings.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/motion.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/structure_editing.h"
#include "store/undo.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/kept_drawings.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t Red = 0xFF, Green = 0xFF00, Blue = 0xFF0000;
constexpr int Front = 4;

class KeptDrawings : public ViewTest {
  protected:
    /// A wall with a window, a smooth roof and an unlit door in one sub-object, and something in another.
    static void Build() {
        SelectedLod();
        Wall = AddFront(-1, 0, 0, 0.8, AddGlow(Red));
        Pane = AddFront(-1, 0, 0, 0.4, AddGlow(Blue), Wall);
        Roof = AddFace({{0.2, 0, 0}, {1.5, 0, 0.1}, {1.2, 0.3, 1.2}}, AddGlow(Green));
        Roof->Lighting = LightingSmooth;
        Door = AddFront(1, 0, -1, 0.4, AddGlow(0x4080C0));
        Door->Lighting = LightingUnlit;
        AddSubObject("Other");
        AddLodBead(SelectedSubObject());
        Other = AddFront(-1, 0, -1.5, 0.3, Door->Material);
    }

    /// A sheet of side x side squares.
    static void BuildSheet(int side) {
        Material* material = AddGlow(Green);
        for (int i = 0; i < side * side; ++i)
            AddFront(i % side - side / 2.0, 0, i / side - side / 2.0, 0.5, material);
    }

    static void SelectPolygon(Polygon* polygon, int selected) {
        polygon->Selected = selected;
        PolygonSelectionChanged() = 1;
    }

    static Polygon *Wall, *Pane, *Roof, *Door, *Other;
};

Polygon *KeptDrawings::Wall, *KeptDrawings::Pane, *KeptDrawings::Roof, *KeptDrawings::Door, *KeptDrawings::Other;

TEST_F(KeptDrawings, FollowEveryChange) {
    Build();
    CheckKeptDrawings = 0;

    const struct {
        const char* Name;
        std::function<void()> Do;
        bool ShowsInOutlines = true;
    } changes[] = {
        {"another material", [] { CopyPolygonInfo(Wall, Roof); }, false},
        {"a vertex moved",
         [] {
             Door->Beads->Vertex->Position[0] += 0.3;
             NormalsOK() = 0;
         }},
        {"a vertex moved on one's own word",
         [] {
             Roof->Beads->Vertex->Position[2] -= 0.5;
             AppearanceChanged(Roof);
         }},
        {"a polygon added", [] { AddFront(0.3, -0.2, 0.5, 0.2, Pane->Material); }},
        {"a hole added", [] { AddFront(-1.4, 0, 0.5, 0.2, Roof->Material, Wall); }},
        {"a material replaced", [] { SearchAndReplaceMaterial(Pane->Material, Roof->Material); }, false},
        {"an unlit polygon's material changed",
         [] {
             Door->Material->Diffuse[0] = 1;
             MaterialsNeedDefining = 1;
         },
         false},
        {"lighting switched off",
         [] {
             Pane->Lighting = LightingUnlit;
             AppearanceChanged(Pane);
         },
         false},
        {"a polygon selected", [] { SelectPolygon(Wall, 1); }},
        {"another one selected",
         [] {
             SelectPolygon(Wall, 0);
             SelectPolygon(Other, 1);
         }},
        {"the selected one moved",
         [] {
             Other->Beads->Vertex->Position[0] -= 0.3;
             NormalsOK() = 0;
         }},
        {"a snapshot taken and the wall deleted",
         [] {
             SelectPolygon(Other, 0);
             CleanUpObject();
             CopyCurrentObject();
             DeletePolygon(Wall, 1);
         }},
        {"undone", [] { Undo(); }},
        {"redone", [] { Undo(); }},
        {"undone again", [] { Undo(); }},
        {"a sub-object deleted", [] { DeleteSubObject(SelectedSubObject(), 1); }},
        {"one made in its place",
         [] {
             AddSubObject("New");
             AddLodBead(SelectedSubObject());
             AddFront(-1, 0, -1.2, 0.2, FirstMaterial());
         }},
        {"materials numbered anew",
         [] {
             AddGlow(0x808080);
             Material* first = FirstMaterial();
             for (Material* material = first->Next; material; material = material->Next)
                 material->Emission[1] = 0.5F;
             MaterialsNeedDefining = 1;
         },
         false},
    };

    View& view = LookFrom(Front, 2.5);
    const auto draw = [&](bool solid) {
        SolidView = OutlinePolygons = solid;
        Draw(view);
        return Shown();
    };
    gl::Picture before[2] = {draw(false), draw(true)};
    for (const auto& change : changes) {
        change.Do();
        for (const bool solid : {false, true}) {
            const gl::Picture kept = draw(solid);
            ReleaseKeptDrawings();
            EXPECT_EQ(gl::DifferingPixels(kept, draw(solid), 0, nullptr), 0) << change.Name << ' ' << solid;
            if (solid || change.ShowsInOutlines) {
                EXPECT_GT(gl::DifferingPixels(kept, before[solid], 0, nullptr), 0) << change.Name << ' ' << solid;
            }
            before[solid] = kept;
        }
    }
    Keep("changed");
}

/// Puts vertices in motion: all, or those of some polygons.
Vertex* Chain(const std::vector<const Polygon*>& polygons) {
    Vertex* first = nullptr;
    const auto add = [&](Vertex* vertex) {
        std::copy_n(vertex->Position, 3, vertex->SavedPosition);
        vertex->NextInGroup = first;
        first = vertex;
    };
    if (polygons.empty())
        for (Vertex* vertex : EveryVertex(CurrentObject()))
            add(vertex);
    for (const Polygon* polygon : polygons)
        for (const PolygonBead* bead : EveryBead(polygon))
            add(bead->Vertex);
    return first;
}

void Place(Vertex* first, const Matrix& matrix) {
    for (Vertex* vertex : Along<&Vertex::NextInGroup>(first))
        TransformCoordinate(vertex->SavedPosition, matrix, vertex->Position);
}

TEST_F(KeptDrawings, FollowMotionsStepByStep) {
    BuildSheet(100);
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        vertex->Position[1] = 1;
    Build();
    for (const bool smooth : {false, true}) // with light that shows normals
        for (Polygon* polygon : {Roof, Other}) {
            polygon->Material = AddGlow(0);
            polygon->Material->Diffuse[smooth] = 1;
        }
    MaterialsNeedDefining = 1;
    SelectPolygon(Other, 1);

    const struct {
        const char* Name;
        std::vector<const Polygon*> Polygons;
    } sets[] = {{"all", {}}, {"some", {Wall, Pane, Other}}, {"a part of one", {Roof}}};

    Matrix turned, stretched;
    MultMatrix(RollMatrix(20), TranslationMatrix(0.2, 0, 0.1), turned);
    MultMatrix(ScaleMatrix(1.5, 1, 0.6), PitchMatrix(25), stretched);

    for (const auto& set : sets)
        for (const int display : {0, 1, 2}) {
            SCOPED_TRACE(std::string(set.Name) + " as " + std::to_string(display));
            SolidView = display == 0;
            Backface = display == 2;
            View& view = LookFrom(display == 2 ? Direction3D : Front, 2.5);
            Draw(view);
            Vertex* first = Chain(set.Polygons);
            if (set.Polygons.size() == 1)
                first = first->NextInGroup;
            for (const Matrix* matrix : {&turned, &stretched}) {
                Place(first, *matrix);
                ASSERT_TRUE(StepMotion(first, IdentityMatrix, *matrix));
                Draw(view);
            }
            const gl::Picture moved = Shown();
            // What comes to be drawn during a motion starts where it is by then.
            ReleaseKeptDrawings();
            Draw(view);
            Place(first, turned);
            ASSERT_TRUE(StepMotion(first, IdentityMatrix, turned));
            Draw(view);
            const gl::Picture back = Shown();
            EndMotion();
            for (const auto& [matrix, picture] : {std::pair{&turned, &back}, {&stretched, &moved}}) {
                Place(first, *matrix);
                NormalsOK() = 0;
                ReleaseKeptDrawings();
                Draw(view);
                EXPECT_LE(gl::DifferingPixels(*picture, Shown(), 4, nullptr), 20);
            }
        }
    const Matrix mirrored = ScaleMatrix(-1, 1, 1), flat = ScaleMatrix(1, 1, 1e-9);
    Vertex* first = Chain({});
    for (const Matrix* matrix : {&mirrored, &flat}) {
        EXPECT_TRUE(StepMotion(first, IdentityMatrix, turned));
        EXPECT_FALSE(StepMotion(first, IdentityMatrix, *matrix));
        EXPECT_EQ(CurrentMotion(), nullptr);
    }
    EXPECT_FALSE(StepMotion(first, flat, IdentityMatrix));
}

TEST_F(KeptDrawings, TellWhenNobodyToldOfAChange) {
    Build();
    View& view = LookFrom(Front, 2.5);
    Draw(view);
    Draw(view);
    EXPECT_EQ(StaleDrawingsFound, 0);
    Roof->Material = Pane->Material;
    testing::internal::CaptureStderr();
    Draw(view);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "A kept drawing of SubObject1 is out of date: nobody told of a change.\n");
    EXPECT_EQ(StaleDrawingsFound, 1);
    EXPECT_EQ(Count(Green), 0) << "and it has been made good";
    StaleDrawingsFound = 0;
}

TEST_F(KeptDrawings, AreRecordedAnewOnlyWhereSomethingChanged) {
    BuildSheet(200);
    CheckKeptDrawings = 0;
    View& view = LookFrom(Direction3D, 150);
    const auto recordedBy = [&](const std::function<void()>& change) {
        change();
        const int before = PiecesRecorded;
        Draw(view);
        return PiecesRecorded - before;
    };
    EXPECT_GT(recordedBy([] {}), 3) << "40,000 polygons are several pieces";
    EXPECT_EQ(recordedBy([&] { view.ViewMatrix[3][1] += 3; }), 0);
    Polygon* polygon = FirstPolygon();
    for (int i = 0; i < 20000; ++i)
        polygon = polygon->Next;
    EXPECT_EQ(recordedBy([&] {
                  polygon->Lighting = LightingUnlit;
                  AppearanceChanged(polygon);
              }),
              1);
    EXPECT_EQ(recordedBy([&] { AppearanceChanged(CurrentObject()); }), 0) << "it looks as before";
    EXPECT_EQ(recordedBy([&] {
                  polygon->Material->Diffuse[0] = polygon->Material->Alpha = 0.7F;
                  DefineMaterial(polygon->Material);
                  EveryAppearanceChanged();
              }),
              0)
        << "a colour is a definition, of unlit polygons too";
    EXPECT_LE(recordedBy([&] { DeletePolygon(polygon, 1); }), 2);
    EXPECT_LE(recordedBy([] { AddFront(0, 0, 0, 1, FirstMaterial()); }), 2) << "pieces do not move along the list";
    Backface = 1;
    SolidView = 0;
    EXPECT_GT(recordedBy([] {}), 3) << "as outlines";
    EXPECT_EQ(recordedBy([&] { view.ViewMatrix = YawMatrix(70); }), 0) << "whichever face the eye";
    EXPECT_EQ(recordedBy([] { SelectPolygon(FirstPolygon(), 1); }), 2) << "one of the model and the selection";
}

TEST_F(KeptDrawings, GiveTheirMemoryBack) {
    Build();
    SelectPolygon(Wall, 1);
    ShowVertices = SelectionsSolid = 1;
    for (const int solid : {0, 1}) {
        SolidView = solid;
        Draw(LookFrom(Front, 2.5));
    }
    EXPECT_GT(gl::RecordingMemory(), 1000);
    CopyCurrentObject();
    Undo();
    Draw(LookFrom(Front, 2.5));
    AddObject("Another", 0, 0);
    for (Object* object : {CurrentObject()->Next, CurrentObject()->Prev})
        if (object)
            DeleteObject(object);
    EXPECT_EQ(gl::RecordingMemory(), 0);
}

TEST_F(KeptDrawings, AreMadeAgainWhenTheGraphicsLayerHasEnded) {
    Build();
    ShowVertices = 1;
    View& view = LookFrom(Front, 2.5);
    Draw(view);
    const gl::Picture before = Shown();
    EndToolkit();
    OpenTheWindow();
    gl::makeobj(gl::genobj());
    gl::closeobj();
    Draw(view);
    EXPECT_EQ(gl::DifferingPixels(before, Shown(), 0, nullptr), 0);
    EXPECT_TRUE(gl::isobj(1)) << "nobody released what is somebody else's";
}

TEST_F(KeptDrawings, LeaveNoGapsInOutlinesThatShareEdges) {
    // Four squares about a point: no pixel is missing where lines only end.
    SelectedLod();
    Vertex* grid[3][3];
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            grid[row][column] = AddPoint(column - 1, 0, row - 1);
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 2; ++column) {
            PolygonBead* beads = nullptr;
            for (Vertex* vertex :
                 {grid[row][column], grid[row][column + 1], grid[row + 1][column + 1], grid[row + 1][column]})
                AddPolygonBead(beads, vertex);
            AddPolygon(beads, nullptr)->Material = FirstMaterial();
        }
    SolidView = 0;
    View& view = LookFrom(Front, 1.5);
    view.ViewMatrix[3][0] = view.ViewMatrix[3][2] = 0.003; // not on the border between pixels
    Draw(view);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            const auto place = PlaceOf(view, column - 1, 0, row - 1);
            EXPECT_EQ(Pixel(static_cast<int>(place[0]), static_cast<int>(place[1])), 0xFFFFFFU) << row << ' ' << column;
        }
}

} // namespace
