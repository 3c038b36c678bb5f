#include "base/debug.h"
#include "base/memory.h"
#include "base/record_chunks.h"
#include "store/material_list.h"
#include "store/store_test.h"
#include "store/texture_list.h"

#include <cstdint>
#include <cstring>
#include <set>

namespace {

std::vector<std::string> Calls;

template <char Name>
void Note() {
    Calls.emplace_back(1, Name);
}

class RecordsTest : public StoreTest {};

TEST_F(RecordsTest, TheCurrentObjectOfAnEmptyFileIsMadeWithItsDefaults) {
    Calls.clear();
    TheFirstObjectSlots = {Note<'M'>, Note<'T'>};
    WorkSaved = 0;
    Object* object = CurrentObject();
    EXPECT_STREQ(object->Name, "Unnamed");
    EXPECT_EQ(FirstObject(), object);
    EXPECT_EQ(WorkSaved, 1);
    EXPECT_EQ(Calls, (std::vector<std::string>{"M", "T"}));
    EXPECT_EQ(CurrentObject(), object) << "asking again makes no second object";

    PointToMerge(1);
    WorkSaved = 0;
    EXPECT_STREQ(CurrentObject()->Name, "Unnamed");
    EXPECT_EQ(WorkSaved, 0);
    EXPECT_EQ(Calls.size(), 2U) << "a merge file gets no defaults";
    AddVertex(1, 2, 3);
    PointToMerge(0);
    EXPECT_EQ(CurrentObject(), object);
    EXPECT_EQ(FirstVertex(), nullptr);
}

TEST_F(RecordsTest, MissingStructureIsMadeOnDemand) {
    Lod* lod = FirstLod();
    EXPECT_STREQ(lod->Name, "Lod1");
    ASSERT_NE(lod->FirstBead, nullptr);
    EXPECT_EQ(lod->FirstBead->SubObject, FirstSubObject());
    EXPECT_STREQ(FirstSubObject()->Name, "SubObject1");
    EXPECT_EQ(lod->FirstBead->Next, nullptr);
    EXPECT_STREQ(Scene()->Name, "Scene");
    EXPECT_EQ(SelectedBranch(), nullptr);
}

TEST_F(RecordsTest, StaleSelectionsAreRepaired) {
    SubObject* first = AddSubObject("first");
    SubObject* second = AddSubObject("second");
    SelectedSubObject() = first;
    EXPECT_EQ(SelectedSubObject(), first);
    DeleteSubObject(first, 0);
    EXPECT_EQ(SelectedSubObject(), second);
    CurrentObject()->SelectedSubObject = nullptr;
    EXPECT_EQ(SelectedSubObject(), second);

    Lod* near = AddLod("near");
    Lod* far = AddLod("far");
    SelectedLod() = near;
    DeleteLod(near);
    EXPECT_EQ(SelectedLod(), far);
    SelectedLod() = nullptr;
    EXPECT_EQ(SelectedLod(), nullptr) << "no level selected is a choice";
}

TEST_F(RecordsTest, ASelectionOfAnotherObjectIsStale) {
    Object* one = AddObject("one", 0, 0);
    SubObject* older = AddSubObject("older");
    AddSubObject("newer");
    SelectedSubObject() = older;
    ASSERT_EQ(SelectedSubObject(), older);
    AddObject("two", 0, 0);
    SubObject* own = AddSubObject("own");
    SelectedSubObject() = older;
    EXPECT_EQ(SelectedSubObject(), own);
    CurrentObject() = one;
    EXPECT_EQ(SelectedSubObject(), older);
}

TEST_F(RecordsTest, ReleasedRecordsAreRecognisableAndNewOnesClean) {
    const auto isPoison = [](const void* link) { return reinterpret_cast<std::uintptr_t>(link) == PoisonLink; };
    Vertex* vertex = NewVertex(1, 2, 3);
    vertex->Selected = 1;
    vertex->Prev = vertex->Copy = vertex;
    FreeVertex(vertex);
    EXPECT_TRUE(isPoison(vertex->Prev));
    EXPECT_TRUE(isPoison(vertex->NextInSubset));
    EXPECT_EQ(NewVertex(4, 5, 6), vertex) << "the record released last is used first";
    EXPECT_EQ(vertex->Prev, nullptr);
    EXPECT_EQ(vertex->Copy, nullptr);
    EXPECT_EQ(vertex->Selected, 0);
    EXPECT_EQ(vertex->Position[2], 6);
    FreeVertex(vertex);

    Polygon* polygon = NewPolygon();
    polygon->LightGroup = 7;
    polygon->Flags = 3;
    FreePolygon(polygon);
    EXPECT_TRUE(isPoison(polygon->PrevSibling));
    EXPECT_TRUE(isPoison(polygon->Beads));
    EXPECT_EQ(NewPolygon(), polygon);
    EXPECT_EQ(polygon->LightGroup, 0);
    EXPECT_EQ(polygon->Flags, 0);
    FreePolygon(polygon);

    PolygonBead* beads[3];
    PolygonBead* chain = nullptr;
    for (PolygonBead*& bead : beads)
        bead = AddPolygonBead(chain, nullptr);
    beads[1]->TexCoord[0] = 5;
    FreePolygonBeadChain(chain);
    for (const PolygonBead* bead : beads)
        EXPECT_TRUE(isPoison(bead->Polygon) && isPoison(bead->NextOnVertex));
    for (PolygonBead* bead : beads) {
        EXPECT_EQ(NewPolygonBead(), bead);
        EXPECT_EQ(bead->TexCoord[0], 0);
    }
    for (PolygonBead* bead : beads)
        FreePolygonBead(bead);

    Lod* lod = NewLod();
    lod->Distance = 3;
    FreeLod(lod);
    EXPECT_EQ(NewLod()->Distance, 1000000.0);
    FreeLod(lod);

    Branch* branch = NewBranch();
    branch->Visible = 0;
    branch->Transform[3][0] = 9;
    FreeBranch(branch);
    EXPECT_TRUE(isPoison(branch->Next));
    SceneChangedSize = 0;
    EXPECT_EQ(NewBranch(), branch);
    EXPECT_EQ(branch->Visible, 1);
    EXPECT_EQ(branch->Transform, IdentityMatrix);
    EXPECT_EQ(SceneChangedSize, 1);
    FreeBranch(branch);
}

/// Memory is only counted in a developer build with tracking on; a test makes it one for a while.
class TrackedStoreTest : public StoreTest {
  protected:
    void SetUp() override {
        StoreTest::SetUp();
        Quitting = 1;
        ResetStorage();
        FreeWorkPolys();
        FreeClippingBeads();
        Quitting = 0;
        DeveloperBuild = 1;
        MemoryTracking(1);
        InUseBefore = MemoryInUse();
    }

    void TearDown() override {
        StoreTest::TearDown();
        Quitting = 1;
        ResetStorage();
        FreeWorkPolys();
        FreeClippingBeads();
        Quitting = 0;
        MemoryTracking(0);
        DeveloperBuild = DeveloperBuildBefore;
    }

    std::size_t InUse() const { return MemoryInUse() - InUseBefore; }

    int DeveloperBuildBefore = DeveloperBuild;
    std::size_t InUseBefore = 0;
};

TEST_F(TrackedStoreTest, EveryRecordIsABlockOfItsOwnAndAllIsGivenBackAtTheEnd) {
    CurrentObject();
    const std::size_t before = InUse();
    Polygon* polygon = TriangleAt(0);
    EXPECT_EQ(InUse() - before,
              3 * sizeof(Vertex) + 3 * sizeof(PolygonBead) + sizeof(Polygon) + sizeof(SubObject) + sizeof "SubObject1");
    TriangleAt(1, polygon);
    AddLodBead(FirstSubObject());
    CopyCurrentObject();
    AddBranch(Scene(), BranchAsChild)->Name = CopyOfString("here");
    CopySceneForUndo();
    AddMaterial(NewMaterial());
    Texture* texture = NewTexture();
    texture->FileName = CopyOfString("brick.rgb");
    AddTextureToList(texture);
    WorkPoly* workPoly = NewWorkPoly();
    workPoly->FirstBead = NewWorkPolyBead();
    workPoly->FirstChild = NewWorkPoly();
    FreeWorkPoly(workPoly);
    FreeClippedPolygon(NewPolyClipBead());

    ResetStorage();
    EXPECT_GT(InUse(), 0U) << "spare records are kept while the program runs";
    FreeWorkPolys();
    FreeClippingBeads();
    Quitting = 1;
    ResetStorage();
    Quitting = 0;
    EXPECT_EQ(InUse(), 0U);
}

TEST_F(RecordsTest, PoolsInChunksGiveBackWhatIsSpareAndKeepWhatIsUsed) {
    const int before = ChunkedRecords;
    ChunkedRecords = 1;
    FreeSpareVertices();
    std::set<Vertex*> used;
    std::vector<Vertex*> released;
    for (int i = 0; i < 10000; ++i) {
        Vertex* vertex = NewVertex(i, 0, 0);
        if (i % 1000 == 0)
            used.insert(vertex);
        else
            released.push_back(vertex);
    }
    for (Vertex* vertex : released)
        FreeVertex(vertex);
    FreeSpareVertices();
    double sum = 0;
    for (std::size_t i = 0; i < released.size(); ++i) {
        released[i] = NewVertex(-1, 0, 0);
        EXPECT_FALSE(used.count(released[i]));
    }
    for (const Vertex* vertex : used)
        sum += vertex->Position[0];
    EXPECT_EQ(sum, 45000);
    released.insert(released.end(), used.begin(), used.end());
    for (Vertex* vertex : released)
        FreeVertex(vertex);
    ChunkedRecords = before;
}

TEST_F(RecordsTest, ResettingTheStoreEmptiesItInOrderAndTellsTheUpperFloors) {
    struct Case {
        int Merging, Quit, New, Viewports;
        const char* Expected;
    };

    for (const Case& example : {Case{0, 0, 0, 3, "dDPVDI"},
                                {1, 0, 0, 3, "D"},
                                {0, 1, 1, 1, "dDPV"},
                                {0, 0, 1, 3, "dDPVDIR"},
                                {0, 0, 1, 1, "dDPVDIRC"}}) {
        PointToMerge(example.Merging);
        TriangleAt(0);
        AddMaterial(NewMaterial());
        CurrentTexture() = nullptr;
        ObjectIsolated = 0;
        TheSceneSlots = {Note<'d'>, Note<'D'>, nullptr, nullptr};
        TheStorageSlots = {Note<'P'>, Note<'V'>, Note<'I'>, Note<'R'>, Note<'C'>};
        Quitting = example.Quit;
        DoingNew = example.New;
        NoViewports = example.Viewports;
        Calls.clear();
        ResetStorage();
        std::string calls;
        for (const std::string& call : Calls)
            calls += call;
        EXPECT_EQ(calls, example.Expected);
        EXPECT_EQ(FirstObject(), nullptr);
        EXPECT_EQ(CurrentFile->CurrentObject, nullptr);
        EXPECT_EQ(FirstMaterial(), nullptr);
        EXPECT_EQ(ObjectIsolated, example.Merging || example.Quit ? 0 : 1);
        Quitting = DoingNew = 0;
    }
    NoViewports = 1;
    ObjectIsolated = 1;
}

TEST_F(RecordsTest, TheDebugStreamTellsTheRecordSizes) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* previous = debug;
    debug = open_memstream(&text, &size);
    InitialiseStorage();
    std::fclose(debug);
    debug = previous;
    EXPECT_EQ(std::string(text, size),
              "Storage initialised:\nA Vertex occupies:\t112 bytes\nA Polygon occupies:\t136 bytes\n"
              "A PolygonBead occupies:\t56 bytes\nA SubObject occupies:\t104 bytes\nAn Object occupies:\t" +
                  std::to_string(sizeof(Object)) + " bytes\n");
    std::free(text);
}

} // namespace
