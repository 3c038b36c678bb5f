#include "store/ring_model.h"

#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "tools/alignment.h"
#include "tools/polygon_copies.h"
#include "tools/polygon_operations.h"
#include "tools/sub_polygon_selection.h"
#include "tools/vertex_operations.h"

#include <cmath>
#include <functional>

namespace {

class Operations : public RingModel {
  protected:
    void SetUp() override {
        RingModel::SetUp();
        TheUndoSlots.DeselectEverything = DeselectEverything;
    }

    static Polygon* Square(double x, double z, Polygon* parent = nullptr) {
        return AddFace({{x, 0, z}, {x + 1, 0, z}, {x + 1, 1, z}, {x, 1, z}}, parent);
    }

    static void Select(std::initializer_list<Polygon*> polygons) {
        DeselectAllPolygons();
        for (Polygon* polygon : polygons)
            SetPolygonSelected(CurrentObject(), polygon, 1);
        CleanUpObject();
    }

    static std::string Place(const Vertex* vertex) {
        std::string text;
        for (const double coordinate : vertex->Position)
            text += " " + std::to_string(coordinate + 0.0);
        return text;
    }

    /// All that an operation could change: the vertices, and the rings with their places in the tree.
    static std::string Model() {
        CleanUpObject();
        std::vector<std::string> lines;
        for (const Vertex* vertex : EveryVertex(CurrentObject()))
            lines.push_back("vertex" + Place(vertex));
        for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
            std::string ring = polygon->Parent ? "sub-polygon" : "polygon";
            for (const PolygonBead* bead : EveryBead(polygon))
                ring += Place(bead->Vertex);
            lines.push_back(ring);
        }
        std::sort(lines.begin(), lines.end());
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        return text;
    }

    /// The operation, then Undo, then Undo again: back, and there once more.
    static void ExpectUndoable(const std::function<void()>& operation) {
        const std::string before = Model();
        operation();
        CheckIntegrity();
        const std::string after = Model();
        EXPECT_NE(before, after);
        Undo();
        EXPECT_EQ(Model(), before);
        Undo();
        EXPECT_EQ(Model(), after);
    }
};

TEST_F(Operations, DeletingLeavesTheVertices) {
    Polygon* square = Square(0, 0);
    Square(0, 0, square);
    Square(3, 0);
    Select({square});
    ExpectUndoable(DeletePolygons);
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(Vertices(), 12u);
    ExpectUndoable(DeleteUnusedVertices);
    EXPECT_EQ(Vertices(), 4u);
}

TEST_F(Operations, NothingUnusedTakesNoSnapshot) {
    Square(0, 0);
    CopyCurrentObject();
    AddVertex(1, 2, 3);
    DeleteUnusedVertices();
    CleanUpObject();
    const Object* snapshot = CurrentObject()->UndoCopy;
    DeleteUnusedVertices();
    EXPECT_EQ(CurrentObject()->UndoCopy, snapshot);
}

TEST_F(Operations, ReversedSubPolygonsComeAlongOrGoToTheTop) {
    Polygon* square = Square(0, 0);
    Square(0, 0, square);
    Select({square});
    ExpectUndoable(ReversePolygons);
    CleanUpObject();
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        EXPECT_NEAR(polygon->Normal[2], -1, 1e-6);
    // A decal alone cannot stay on a polygon that faces the other way.
    Polygon* sub = nullptr;
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        if (polygon->Parent)
            sub = polygon;
    ASSERT_NE(sub, nullptr);
    Select({sub});
    ReversePolygons();
    EXPECT_EQ(sub->Parent, nullptr);
}

TEST_F(Operations, PoppedPolygonsKeepTheirOwnSubPolygons) {
    Polygon* square = Square(0, 0);
    Polygon* decal = Square(0, 0, square);
    Polygon* onDecal = Square(0, 0, decal);
    SubObject* second = AddSubObject("Second");
    Select({decal});
    PopPolygon();
    EXPECT_EQ(decal->Parent, nullptr);
    EXPECT_EQ(onDecal->Parent, decal);
    EXPECT_EQ(decal->SubObject, second);
    EXPECT_EQ(onDecal->SubObject, second);
    EXPECT_TRUE(IsSubPolygonOf(decal, onDecal));
    EXPECT_FALSE(IsSubPolygonOf(square, onDecal));
    CheckIntegrity();
}

TEST_F(Operations, SelectionsWidenThroughTheTree) {
    Polygon* top = Square(0, 0);
    Polygon* middle = Square(0, 0, top);
    Polygon* bottom = Square(0, 0, middle);
    Polygon* sibling = Square(0, 0, top);
    Select({middle});
    SelectAllUnselectedChildren();
    EXPECT_EQ(SelectedPolygons().size(), 2u);
    EXPECT_TRUE(bottom->Selected && !top->Selected);
    EXPECT_FALSE(NoParentSelected(bottom));
    Select({bottom});
    EXPECT_TRUE(NoParentSelected(bottom));
    SelectAllUnselectedParents();
    EXPECT_EQ(SelectedPolygons().size(), 4u);
    EXPECT_TRUE(sibling->Selected);
}

TEST_F(Operations, MirrorImagesJoinAtThePlane) {
    Polygon* square = Square(0, 2);
    Square(0, 2, square);
    Select({square});
    ExpectUndoable([] { MirrorPolygons(nullptr, MirrorX); });
    // The decal lies on the square's own vertices, the images share the edge in the plane.
    EXPECT_EQ(Vertices(), 6u);
    EXPECT_EQ(Polygons(), 4u);
    CleanUpObject();
    int children = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        EXPECT_NEAR(polygon->Normal[2], 1, 1e-6);
        children += polygon->Parent != nullptr;
    }
    EXPECT_EQ(children, 2);
}

TEST_F(Operations, TheGridMirrorsToo) {
    View view{};
    view.GridMatrix = TranslationMatrix(0, 0, 5);
    Vertex* vertex = AddVertex(1, 2, 3);
    double plane[4] = {0, 0, 1, -5};
    ReflectVertex(vertex, MirrorGrid, plane);
    EXPECT_NEAR(vertex->Position[2], 7, 1e-12);
    Polygon* square = Square(0, 2);
    Select({square});
    MirrorPolygons(&view, MirrorGrid);
    CleanUpObject();
    EXPECT_NEAR(ObjectMax()[2], 8, 1e-12);
}

TEST_F(Operations, DoubledPolygonsShareTheirVertices) {
    Polygon* square = Square(0, 0);
    Square(0, 0, square);
    square->Lighting = LightingSmooth;
    Select({square});
    ExpectUndoable(DoublePolygons);
    EXPECT_EQ(Polygons(), 4u);
    EXPECT_EQ(Vertices(), 8u);
    double sum = 0;
    int children = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        sum += polygon->Normal[2];
        children += polygon->Parent != nullptr;
        const bool smoothBack = polygon->Lighting == LightingSmooth && polygon->Normal[2] < 0;
        EXPECT_EQ(polygon->LightGroup != 0, smoothBack);
    }
    EXPECT_NEAR(sum, 0, 1e-6);
    EXPECT_EQ(children, 2);
}

TEST_F(Operations, JoiningKeepsOneVertexInTheMiddle) {
    AddGrid(1, 2);
    CleanUpObject();
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex->Position[1] == 0)
            SetVertexSelected(CurrentObject(), vertex, 1);
    CleanUpObject();
    ExpectUndoable(JoinVertices);
    int atMiddle = 0;
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        atMiddle += vertex->Position[0] == 1 && vertex->Position[1] == 0;
    EXPECT_EQ(atMiddle, 1);
    EXPECT_EQ(Vertices(), 4u);
}

TEST_F(Operations, StickingMovesAlongTheGridsNormal) {
    View view{};
    view.GridMatrix = TranslationMatrix(4, 4, 2);
    Vertex* vertex = AddVertex(1, 2, 9);
    SetVertexSelected(CurrentObject(), vertex, 1);
    CleanUpObject();
    ExpectUndoable([&] { StickVerticesToGrid(&view); });
    EXPECT_EQ(FirstVertex()->Position[0], 1);
    EXPECT_NEAR(FirstVertex()->Position[2], 2, 1e-12);
    EXPECT_FALSE(FirstVertex()->Selected);
}

TEST_F(Operations, AlignmentsPutTheBoxAtTheOrigin) {
    struct Case {
        int How;
        double Low[3];
    };

    // The box of the model is 2 wide, 4 deep and 6 high and begins at (1, 1, 1).
    const Case cases[] = {
        {AlignCentre, {-1, -2, -3}}, {AlignStanding, {-1, -2, 0}}, {AlignLowX, {0, 1, 1}},
        {AlignMiddleX, {-1, 1, 1}},  {AlignHighX, {-2, 1, 1}},     {AlignLowY, {1, 0, 1}},
        {AlignMiddleY, {1, -2, 1}},  {AlignHighY, {1, -4, 1}},     {AlignLowZ, {1, 1, 0}},
        {AlignMiddleZ, {1, 1, -3}},  {AlignHighZ, {1, 1, -6}},
    };
    for (const Case& align : cases) {
        ResetStorage();
        AddFace({{1, 1, 1}, {3, 1, 1}, {3, 5, 7}, {1, 5, 7}});
        Branch* branch = AddBranch(Scene(), BranchAsChild);
        branch->Object = CurrentObject();
        ExpectUndoable([&] { AlignObject(align.How); });
        CleanUpObject();
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(ObjectMin()[axis], align.Low[axis], 1e-12) << align.How;
            EXPECT_NEAR(branch->Transform[3][axis], 1 - align.Low[axis], 1e-12) << align.How;
        }
        Undo();
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(branch->Transform[3][axis], 0, 1e-12) << "undone, as the model is: " << align.How;
    }
}

TEST_F(Operations, AlignedPolygonsLeaveTheOthers) {
    Polygon* square = Square(5, 1);
    Square(9, 9);
    Select({square});
    AlignPolygons(AlignLowX);
    CleanUpObject();
    EXPECT_EQ(ObjectMin()[0], 0);
    EXPECT_EQ(ObjectMax()[0], 10);
}

} // namespace
