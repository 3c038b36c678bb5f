#include "interaction/views_test.h"

#include "interaction/position_gizmo.h"
#include "store/clean_up.h"
#include "store/duplicates.h"
#include "store/integrity.h"
#include "store/new_vertices.h"
#include "store/objects.h"
#include "store/structure_editing.h"
#include "support/test_seed.h"
#include "tools/described_model.h"
#include "tools/move.h"
#include "tools/polygon_clipboard.h"
#include "tools/random_model.h"
#include "tools/sub_polygon_selection.h"
#include "tools/vertex_clipboard.h"

namespace {

class Clipboard : public ViewsTest {
  protected:
    void TearDown() override {
        ClearControl();
        FreePolygonPaste();
        FreeVertexPaste();
        ViewsTest::TearDown();
    }

    static Polygon* Square(double x, double z, Polygon* parent = nullptr) {
        PolygonBead* beads = nullptr;
        for (const auto& [dx, dy] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            AddPolygonBead(beads, AddVertex(x + dx, dy, z));
        return AddPolygon(beads, parent);
    }

    static void Select(std::initializer_list<Polygon*> polygons) {
        DeselectEverything();
        for (Polygon* polygon : polygons)
            SetPolygonSelected(CurrentObject(), polygon, 1);
        CleanUpObject();
    }

    static std::string Object() {
        CleanUpObject();
        CheckIntegrity();
        return DescribeObject();
    }

    /// After an operation that has ended: back, and there once more.
    static void ExpectUndone(const std::string& before) {
        const std::string after = Object();
        Undo();
        EXPECT_EQ(Object(), before);
        Undo();
        EXPECT_EQ(Object(), after);
        Undo();
    }
};

TEST_F(Clipboard, PastesKeepAllThatAFileTellsAndCanBeUndone) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    for (unsigned round = 0; round < 20; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        ResetStorage();
        RandomModel model(seed + round);
        model.SelectSome();
        std::vector<std::string> copied;
        for (const Polygon* polygon : SelectedPolygons())
            if (NoParentSelected(polygon)) {
                std::ostringstream text;
                Describe(polygon, text);
                copied.push_back(text.str());
            }
        std::sort(copied.begin(), copied.end());
        CopyPolygons();
        // They go into the sub-object where polygons are made, whatever has become of their own.
        SelectedSubObject() = FirstSubObject();
        const std::string before = Object();
        for (const bool accepted : {false, true, true}) {
            const std::string model0 = Object();
            PastePolygons();
            EXPECT_TRUE(PositionGizmoIsOpen());
            CloseOffsetGizmo(accepted);
            if (!accepted) {
                EXPECT_EQ(Object(), before);
                continue;
            }
            CleanUpObject();
            std::vector<std::string> pasted =
                DescribePolygons([](const Polygon* polygon) { return polygon->Selected; });
            std::sort(pasted.begin(), pasted.end());
            EXPECT_EQ(pasted, copied);
            for (const Polygon* polygon : SelectedPolygons())
                EXPECT_EQ(polygon->SubObject, SelectedSubObject());
            ExpectUndone(model0);
        }
    }
}

TEST_F(Clipboard, TakesADecalOnADecalAlongWithTheSelectedGroundOnly) {
    Polygon* ground = Square(0, 0);
    Polygon* innermost = Square(0, 0, Square(0, 0, ground));
    Select({ground, innermost});
    CopyPolygons();
    ASSERT_NE(PolygonPasteList, nullptr);
    EXPECT_EQ(PolygonPasteList->Next, nullptr);
}

TEST_F(Clipboard, CuttingAndPastingBackJoinsTheVertices) {
    Square(1, 0);
    Square(0, 0, Square(0, 0));
    DeleteDuplicateVertices(); // an edge is shared, and the decal lies on the square's corners
    ASSERT_EQ(Vertices(), 6u);
    const auto selectParent = [] {
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            if (polygon->FirstChild)
                Select({polygon});
    };
    selectParent();
    const std::string before = Object();
    CutPolygons();
    EXPECT_EQ(Polygons(), 1u);
    EXPECT_EQ(Vertices(), 4u) << "those that only the cut polygons used are gone";
    ExpectUndone(before);
    selectParent();
    CutPolygons();
    PastePolygons();
    EXPECT_EQ(Vertices(), 8u) << "nothing is joined before the end";
    CloseOffsetGizmo(1);
    EXPECT_EQ(Polygons(), 3u);
    EXPECT_EQ(Vertices(), 6u);
}

TEST_F(Clipboard, OutlivesObjectsAndMergedFilesButNotTheModel) {
    TheStorageSlots.FreePolygonPaste = FreePolygonPaste;
    TheStorageSlots.FreeVertexPaste = FreeVertexPaste;
    Square(0, 0);
    Select({FirstPolygon()});
    CopyPolygons();
    SetVertexSelected(CurrentObject(), FirstVertex(), 1);
    CleanUpObject();
    CopyVertices();
    ::Object* const source = CurrentObject();
    CurrentObject() = AddObject("Other", 0, 0);
    DeleteObject(source);
    PointToMerge(1);
    ResetStorage();
    PointToMerge(0);
    for (const std::size_t pasted : {1u, 2u}) {
        PastePolygons();
        CloseOffsetGizmo(1);
        EXPECT_EQ(Polygons(), pasted);
    }
    PasteVertices();
    CloseOffsetGizmo(1);
    EXPECT_EQ(Vertices(), 5u) << "the squares have been joined at their corners";
    ResetStorage();
    EXPECT_TRUE(!PolygonPasteList && !PolygonPasteVertices && !VertexPaste);
    TheStorageSlots = {};
}

TEST_F(Clipboard, ASubPolygonAloneIsPastedAtTheTop) {
    Polygon* decal = Square(0, 0, Square(0, 0));
    Square(0, 0, decal);
    Select({decal});
    CopyPolygons();
    PastePolygons();
    CloseOffsetGizmo(1);
    CleanUpObject();
    int tops = 0;
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        tops += !polygon->Parent && polygon->Selected && polygon->FirstChild;
    EXPECT_EQ(tops, 1);
    EXPECT_EQ(Polygons(), 5u);
}

TEST_F(Clipboard, AnEmptyLevelOfDetailTakesNoPaste) {
    Square(0, 0);
    Select({FirstPolygon()});
    CopyPolygons();
    AddLod("Empty");
    PastePolygons();
    EXPECT_FALSE(PositionGizmoIsOpen());
    EXPECT_EQ(Polygons(), 1u);
}

TEST_F(Clipboard, CutVerticesTakeTheirPolygonsAndLeaveDecalsThatUseNone) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    for (unsigned round = 0; round < 20; ++round) {
        ResetStorage();
        RandomModel model(seed + round);
        DeselectEverything();
        std::size_t cut = 0;
        for (Vertex* vertex : EveryVertex(CurrentObject()))
            if (model.Number(10) == 0 || !vertex->Next) {
                SetVertexSelected(CurrentObject(), vertex, 1);
                ++cut;
            }
        const std::size_t vertices = Vertices();
        std::size_t expected = 0;
        for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
            bool uses = false;
            for (const PolygonBead* bead : EveryBead(polygon))
                uses |= bead->Vertex->Selected != 0;
            expected += !uses;
        }
        const std::string before = Object();
        CutVertices();
        EXPECT_EQ(Polygons(), expected) << "round " << round;
        EXPECT_EQ(Vertices(), vertices - cut);
        EXPECT_EQ(Count(Along<&Vertex::Next>(VertexPaste)), cut);
        ExpectUndone(before);
    }
}

TEST_F(Clipboard, PastedVerticesAreTemporaryUntilDone) {
    Vertex* vertex = AddVertex(1, 2, 3);
    SetVertexSelected(CurrentObject(), vertex, 1);
    CleanUpObject();
    CopyVertices();
    EXPECT_FALSE(vertex->Selected);
    const std::string before = Object();
    PasteVertices();
    EXPECT_EQ(Vertices(), 1u);
    CloseOffsetGizmo(0);
    EXPECT_EQ(NewVertices, nullptr);
    EXPECT_EQ(Object(), before);
    PasteVertices();
    CloseOffsetGizmo(1);
    EXPECT_EQ(NewVertices, nullptr);
    EXPECT_EQ(Vertices(), 2u);
    ExpectUndone(before);
}

TEST_F(Clipboard, MovingVerticesPartsLevelsOfDetailOnlyWhenItIsDone) {
    for (const bool accepted : {false, true}) {
        ResetStorage();
        Polygon* square = Square(0, 0);
        AddSubObject("Coarse");
        PolygonBead* beads = nullptr;
        for (const PolygonBead* bead : EveryBead(square))
            AddPolygonBead(beads, bead->Vertex);
        AddPolygon(beads, nullptr);
        SelectLod(FirstLod()); // holds the first sub-object alone
        SetVertexSelected(CurrentObject(), square->Beads->Vertex, 1);
        const std::string before = Object();
        MoveVertices();
        EXPECT_EQ(Vertices(), 5u);
        CloseOffsetGizmo(accepted);
        if (accepted)
            ExpectUndone(before);
        EXPECT_EQ(Object(), before);
    }
}

} // namespace
