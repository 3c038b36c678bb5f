#include "store/integrity.h"
#include "store/store_checker.h"
#include "store/store_test.h"

#include <gmock/gmock.h>

#include <functional>
#include <sstream>

namespace {

class UndoTest : public StoreTest {
  protected:
    void TearDown() override {
        EXPECT_EQ(CheckFile(MainFile), "");
        StoreTest::TearDown();
    }
};

void DescribePolygons(std::ostream& text, const Polygon* first) {
    for (const Polygon* polygon = first; polygon; polygon = polygon->NextSibling) {
        text << '[' << int(polygon->Lighting) << polygon->LightGroup << int(polygon->Flags);
        for (const PolygonBead* bead : EveryBead(polygon))
            text << ' ' << bead->Vertex->Position[0] << ',' << bead->Vertex->Position[1] << ',' << bead->TexCoord[0];
        DescribePolygons(text, polygon->FirstChild);
        text << ']';
    }
}

/// What a snapshot must bring back, as text.
std::string Describe(const Object* object) {
    std::ostringstream text;
    text << object->Name << ' ' << object->Attributes << '\n';
    for (const Vertex* vertex : EveryVertex(object))
        text << vertex->Position[0] << ' ' << vertex->Position[1] << ' ' << vertex->Position[2] << '\n';
    for (const SubObject* subObject : EverySubObject(object)) {
        text << subObject->Name << (subObject == object->SelectedSubObject ? "*: " : ": ");
        DescribePolygons(text, subObject->FirstPolygon);
        text << '\n';
    }
    for (const Lod* lod : EveryLod(object)) {
        text << lod->Name << (lod == object->SelectedLod ? "* " : " ") << lod->Distance;
        for (const LodBead* bead : EveryLodBead(lod))
            text << ' ' << bead->SubObject->Name << bead->Shown;
        text << '\n';
    }
    return text.str();
}

/// Two sub-objects, two levels, a sub-polygon, shared corners.
void BuildSample() {
    AddObject("Sample", 0, 0);
    ObjectAttributes() = ObjectIsBillboard;
    AddSubObject("A");
    Polygon* roof = TriangleAt(0);
    roof->Beads->TexCoord[0] = 0.25F;
    roof->LightGroup = 4;
    Polygon* window = TriangleAt(1, roof);
    TriangleAt(2, roof);
    window->Flags = PolygonIsSub;
    AddSubObject("B");
    PolygonOn({roof->Beads->Vertex, window->Beads->Vertex, AddVertex(9, 9, 9)});
    SelectedSubObject() = CurrentObject()->FirstSubObject->Next;
    Lod* near = AddLod("near");
    near->Distance = 10;
    AddLodBead(CurrentObject()->FirstSubObject)->Shown = 0;
    AddLod("far");
    AddLodBead(CurrentObject()->FirstSubObject->Next);
    AddLodBead(CurrentObject()->FirstSubObject);
    SelectedLod() = near;
}

TEST_F(UndoTest, BringsBackEverythingAndRedoes) {
    BuildSample();
    // Sorted, as every object is by the time somebody undoes: a snapshot is sorted when it is brought back.
    CopyCurrentObject();
    Undo();
    CopyCurrentObject();
    const std::string before = Describe(CurrentObject());
    Object* edited = CurrentObject();

    DeletePolygon(FirstSubObject()->FirstPolygon, 0);
    AddVertex(5, 5, 5);
    AddSubObject("C");
    TriangleAt(7);
    ObjectAttributes() = 0;
    FirstVertex()->Selected = 1;
    const std::string after = Describe(CurrentObject());
    ASSERT_NE(before, after);

    WorkSaved = 1;
    Undo();
    EXPECT_NE(CurrentObject(), edited);
    EXPECT_EQ(FirstObject(), CurrentObject());
    EXPECT_EQ(Describe(CurrentObject()), before);
    EXPECT_EQ(ConnectionsOK(), 0);
    EXPECT_EQ(WorkSaved, 0);
    Undo();
    EXPECT_EQ(CurrentObject(), edited);
    EXPECT_THAT(Describe(CurrentObject()), testing::HasSubstr("C*: [100 7,0,0 8,1,0 9,0,0]"));
    EXPECT_EQ(FirstVertex()->Selected, 1) << "the edited object itself comes back";
}

TEST_F(UndoTest, TheSceneAndTheViewsFollow) {
    BuildSample();
    Object* object = CurrentObject();
    AddObject("Other", 0, 0);
    CurrentObject() = object;
    AddBranch(Scene(), BranchAsChild)->Object = object;
    AddBranch(Scene()->FirstChild, BranchAsChild)->Object = FirstObject();
    CopySceneForUndo();
    ScenePaste = CopyOfBranch(Scene());
    object->View[0].Zoom = 3;
    object->View[1].Zoom = 4;
    object->WorkArea.HalfSize = 5;
    GridSteps() = 6;
    CopyCurrentObject();
    object->View[0].Zoom = 7;
    object->DefaultObject3D.Zoom = 8;
    object->DefaultObject2D[5].Zoom = 9;
    NoViewports = 1;
    Undo();
    Object* restored = CurrentObject();
    EXPECT_EQ(FirstObject(), restored) << "first of the list";
    for (const Branch* tree : {Scene(), SceneUndo, ScenePaste}) {
        EXPECT_EQ(tree->FirstChild->Object, restored);
        EXPECT_STREQ(tree->FirstChild->FirstChild->Object->Name, "Other");
    }
    EXPECT_EQ(restored->View[0].Zoom, 7);
    EXPECT_EQ(restored->View[1].Zoom, 0) << "only the views that are shown";
    EXPECT_EQ(restored->DefaultObject3D.Zoom, 8);
    EXPECT_EQ(restored->DefaultObject2D[5].Zoom, 9);
    EXPECT_EQ(restored->WorkArea.HalfSize, 5);
    EXPECT_EQ(restored->GridSteps, 6);
}

TEST_F(UndoTest, ThereIsOneSnapshotInAFile) {
    BuildSample();
    Object* first = CurrentObject();
    CopyCurrentObject();
    BuildSample();
    CopyCurrentObject();
    EXPECT_EQ(first->UndoCopy, nullptr);
    CurrentObject() = first;
    Undo();
    EXPECT_EQ(CurrentObject(), first) << "nothing to undo there";
}

std::string Order;

TEST_F(UndoTest, TellsTheUpperFloorsInOrder) {
    TheUndoSlots = {[] { Order += 'm'; }, [] { Order += 'd'; }, [] { Order += 'w'; }, [] { Order += 's'; }};
    Order.clear();
    Undo();
    EXPECT_EQ(Order, "");
    CopyCurrentObject();
    Undo();
    EXPECT_EQ(Order, "mdws");
}

TEST_F(UndoTest, ABrokenObjectEndsTheProgramWithItsReason) {
    BuildSample();
    Object* object = CurrentObject();
    Polygon* polygon = FirstPolygon();
    Polygon* top = object->FirstSubObject->Next->FirstPolygon;
    CheckIntegrity();

    struct Case {
        const char* Reason;
        std::function<void()> Break;
    };

    for (const Case& example : {
             Case{"First polygon has a previous", [&] { polygon->Prev = polygon; }},
             {"Next polygon doesn't point back", [&] { polygon->Next->Prev = nullptr; }},
             {"Next polygon doesn't point back", [&] { polygon->Next->Next->Next = polygon->Next; }},
             {"Polygon bead has bad owner", [&] { polygon->Beads->Polygon = polygon->Next; }},
             {"First polygon in sub object has a previous", [&] { top->PrevSibling = polygon; }},
             {"Polygon has NULL owner", [&] { top->SubObject = nullptr; }},
             {"Polygon has bad owner", [&] { top->SubObject = object->FirstSubObject; }},
             {"Loop in sub object polygons",
              [&] {
                  object->FirstSubObject->FirstPolygon = nullptr;
                  top->FirstChild->NextSibling->NextSibling = top->FirstChild;
              }},
             {"Polygon not part of a sub object", [&] { object->FirstSubObject->FirstPolygon = nullptr; }},
             {"Lod bead doesn't point back to owner", [&] { object->FirstLod->FirstBead->Lod = nullptr; }},
         }) {
        EXPECT_EXIT(
            {
                example.Break();
                CheckIntegrity();
            },
            testing::ExitedWithCode(0),
            testing::AllOf(
                testing::HasSubstr(std::string("\n\n\nKirvo: data integrity failure - ") + example.Reason + "!\a\n"),
                testing::HasSubstr("Kirvo: Fatal error in program...\a\n")))
            << example.Reason;
    }
}

} // namespace
