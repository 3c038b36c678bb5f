#include "store/integrity.h"
#include "store/sorting.h"
#include "store/store_checker.h"
#include "store/store_test.h"

namespace {

class EditingTest : public StoreTest {
  protected:
    void TearDown() override {
        EXPECT_EQ(CheckFile(MainFile), "");
        StoreTest::TearDown();
    }
};

TEST_F(EditingTest, NewestFirstInListsAndInOrderInRings) {
    Vertex* a = AddVertex(1, 0, 0);
    Vertex* b = AddVertex(2, 0, 0);
    Vertex* c = AddVertex(3, 0, 0);
    EXPECT_EQ(Collect(EveryVertex(CurrentObject())), (std::vector<Vertex*>{c, b, a}));
    Polygon* polygon = PolygonOn({a, b, c});
    EXPECT_EQ(Corners(polygon), (std::vector<Vertex*>{a, b, c}));
    ConnectionsOK() = 1;
    ReversePolygon(polygon);
    EXPECT_EQ(Corners(polygon), (std::vector<Vertex*>{c, b, a}));
    EXPECT_EQ(ConnectionsOK(), 0);
    Polygon* newer = TriangleAt(5);
    EXPECT_EQ(Collect(EveryPolygon(CurrentObject())), (std::vector<Polygon*>{newer, polygon}));
    EXPECT_EQ(Collect(EveryTopPolygon(SelectedSubObject())), (std::vector<Polygon*>{newer, polygon}));
}

TEST_F(EditingTest, APolygonIsCommittedWithWhatIsCurrent) {
    CurrentMaterial() = NewMaterial();
    CurrentLighting = LightingSmooth;
    SubObject* chosen = AddSubObject("chosen");
    AddSubObject("other");
    SelectedSubObject() = chosen;
    ConnectionsOK() = 1;
    WorkSaved = 1;
    Polygon* polygon = TriangleAt(0);
    EXPECT_EQ(polygon->Material, CurrentMaterial());
    EXPECT_EQ(polygon->Lighting, LightingSmooth);
    EXPECT_EQ(polygon->SubObject, chosen);
    EXPECT_EQ(ConnectionsOK(), 0);
    EXPECT_EQ(WorkSaved, 0);
    polygon->Material = nullptr;
    FreeMaterial(CurrentMaterial());
    CurrentMaterial() = nullptr;
    CurrentLighting = LightingFaceted;
}

TEST_F(EditingTest, AppendingCornersFollowsTheChainWhateverHappenedToIt) {
    Vertex* v[6];
    for (int i = 0; i < 6; ++i)
        v[i] = AddVertex(i, 0, 0);
    PolygonBead* chain = nullptr;
    AddPolygonBead(chain, v[0]);
    DeleteLastPolygonBead(chain, 0);
    EXPECT_EQ(chain, nullptr);
    DeleteLastPolygonBead(chain, 0);
    for (int i = 0; i < 4; ++i)
        AddPolygonBead(chain, v[i]);
    DeleteLastPolygonBead(chain, 0);
    PolygonBead* other = nullptr;
    AddPolygonBead(other, v[5]);
    AddPolygonBead(chain, v[4]);
    AddPolygonBead(other, v[3]);
    Polygon* polygon = AddPolygon(chain, nullptr);
    EXPECT_EQ(Corners(polygon), (std::vector<Vertex*>{v[0], v[1], v[2], v[4]}));
    AddPolygonBead(polygon->Beads, v[5])->Polygon = polygon;
    ReversePolygon(polygon);
    AddPolygonBead(polygon->Beads, v[3])->Polygon = polygon;
    EXPECT_EQ(Corners(polygon), (std::vector<Vertex*>{v[5], v[4], v[2], v[1], v[0], v[3]}));
    EXPECT_EQ(Corners(AddPolygon(other, nullptr)), (std::vector<Vertex*>{v[5], v[3]}));
}

TEST_F(EditingTest, TakingBackCornersCanTakeTheirVertices) {
    PolygonBead* chain = nullptr;
    AddPolygonBead(chain, AddVertex(0, 0, 0));
    AddPolygonBead(chain, AddVertex(1, 0, 0));
    DeleteLastPolygonBead(chain, 1);
    EXPECT_EQ(Collect(EveryVertex(CurrentObject())), (std::vector<Vertex*>{chain->Vertex}));
    DeletePolygonBeadList(chain, 1);
    EXPECT_EQ(FirstVertex(), nullptr);
}

TEST_F(EditingTest, DeletingAPolygonTakesOnlyVerticesThatNothingElseUses) {
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(0, 1, 0), *d = AddVertex(1, 1, 0);
    Polygon* first = PolygonOn({a, b, c});
    PolygonOn({b, d, c});
    a->Uses = d->Uses = 1;
    b->Uses = c->Uses = 2;
    DeletePolygon(first, 1);
    EXPECT_EQ(Collect(EveryVertex(CurrentObject())), (std::vector<Vertex*>{d, c, b}));
    EXPECT_EQ(b->Uses, 1);
}

TEST_F(EditingTest, SubPolygonsAreWalkedAndDeletedWithTheirPolygon) {
    Polygon* root = TriangleAt(0);
    Polygon* older = TriangleAt(1, root);
    Polygon* newer = TriangleAt(2, root);
    Polygon* inner = TriangleAt(3, newer);
    Polygon* other = TriangleAt(4);
    EXPECT_EQ(Collect(EverySubPolygon(root)), (std::vector<Polygon*>{newer, inner, older}));
    UnlinkPolygon(newer);
    EXPECT_EQ(root->FirstChild, older);
    EXPECT_EQ(older->Parent, root);
    EXPECT_EQ(newer->Parent, nullptr);
    EXPECT_EQ(newer->FirstChild, inner);
    LinkPolygon(newer, older);
    std::vector<Polygon*> visited;
    ScanSubPolygons(
        root,
        [](Polygon* polygon, void* argument) { static_cast<std::vector<Polygon*>*>(argument)->push_back(polygon); },
        &visited);
    EXPECT_EQ(visited, (std::vector<Polygon*>{older, newer, inner}));
    DeletePolygon(root, 0);
    EXPECT_EQ(Collect(EveryPolygon(CurrentObject())), (std::vector<Polygon*>{other}));
}

TEST_F(EditingTest, NoNestingIsTooDeep) {
    Polygon* root = TriangleAt(0);
    Polygon* parent = root;
    Vertex* vertex = FirstVertex();
    constexpr int Depth = 200000;
    for (int i = 0; i < Depth; ++i)
        parent = PolygonOn({vertex}, parent);
    int count = 0;
    for ([[maybe_unused]] const Polygon* polygon : EverySubPolygon(root))
        ++count;
    EXPECT_EQ(count, Depth);
    CheckIntegrity();
    CopyCurrentObject();
    Undo();
    DeletePolygon(FirstSubObject()->FirstPolygon, 0);
    EXPECT_EQ(FirstPolygon(), nullptr);
    CurrentObject()->UndoCopy = (FreeObject(CurrentObject()->UndoCopy), nullptr);
}

TEST_F(EditingTest, CopiesOfPolygonsKeepWhatBelongsToThem) {
    Polygon* polygon = TriangleAt(0);
    TriangleAt(1, polygon);
    polygon->LightGroup = 3;
    polygon->Flags = PolygonGeneratesTexture;
    polygon->Lighting = LightingUnlit;
    polygon->Selected = 1;
    polygon->Beads->TexCoord[1] = 0.5F;
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        vertex->Uses = 1;

    Polygon* shared = CopyOfPolygon(polygon, 0);
    EXPECT_EQ(Corners(shared), Corners(polygon));
    EXPECT_EQ(polygon->Beads->Vertex->Uses, 2);
    EXPECT_EQ(shared->Beads->TexCoord[1], 0.5F);
    EXPECT_EQ(shared->Beads->Polygon, shared);
    EXPECT_EQ(shared->LightGroup, 3);
    EXPECT_EQ(shared->Flags, PolygonGeneratesTexture);
    EXPECT_EQ(shared->Lighting, LightingUnlit);
    EXPECT_EQ(shared->Selected, 0);
    EXPECT_EQ(shared->FirstChild, nullptr);
    EXPECT_EQ(shared->SubObject, polygon->SubObject);
    LosePolygon(shared);

    for (Vertex* vertex : Corners(polygon))
        vertex->Copy = CopyOfVertex(vertex);
    Polygon* separate = CopyOfPolygon(polygon, 1);
    EXPECT_EQ(separate->Beads->Vertex, polygon->Beads->Vertex->Copy);
    EXPECT_EQ(separate->Beads->Vertex->Position[0], polygon->Beads->Vertex->Position[0]);
    for (Vertex* vertex : Corners(separate))
        FreeVertex(vertex);
    LosePolygon(separate);
}

TEST_F(EditingTest, ADeletedSubObjectLeavesEveryLevel) {
    SubObject* kept = AddSubObject("kept");
    SubObject* doomed = AddSubObject("doomed");
    TriangleAt(0);
    Lod* far = AddLod("far");
    AddLodBead(kept);
    AddLodBead(doomed);
    Lod* near = AddLod("near");
    AddLodBead(doomed);
    EXPECT_EQ(far->FirstBead->SubObject, kept) << "members stay in the order in which they came";
    DeleteSubObject(doomed, 0);
    EXPECT_EQ(Collect(EveryLodBead(near)).size(), 0U);
    ASSERT_EQ(Collect(EveryLodBead(far)).size(), 1U);
    EXPECT_EQ(FirstPolygon(), nullptr);
    EXPECT_NE(FirstVertex(), nullptr);
}

TEST_F(EditingTest, AnUnusedObjectIsReplaced) {
    CurrentObject();
    AddObject("Unnamed too", 0, 0);
    Object* table = AddObject("Table", 0, 1);
    EXPECT_EQ(Names(EveryObject(MainFile)), (std::vector<std::string>{"Table", "Unnamed"}));
    EXPECT_EQ(CurrentObject(), table);
    CurrentObject() = FindUnusedObject();
    AddVertex(0, 0, 0);
    EXPECT_EQ(FindUnusedObject(), nullptr);
    AddObject("Chair", 1, 1);
    EXPECT_EQ(Names(EveryObject(MainFile)), (std::vector<std::string>{"Chair", "Table", "Unnamed"}));
}

TEST_F(EditingTest, ADeletedCurrentObjectIsSucceededByANeighbour) {
    Object* c = AddObject("c", 0, 0);
    Object* b = AddObject("b", 0, 0);
    Object* a = AddObject("a", 0, 0);
    WorkSaved = 1;
    DeleteObject(b);
    EXPECT_EQ(WorkSaved, 0);
    EXPECT_EQ(CurrentObject(), a);
    DeleteObject(a);
    EXPECT_EQ(CurrentObject(), c);
    b = AddObject("b", 0, 0);
    CurrentObject() = c;
    DeleteObject(c);
    EXPECT_EQ(CurrentObject(), b) << "the last in the list is succeeded by the one before it";
    DeleteObject(b);
    EXPECT_EQ(FirstObject(), nullptr);
    EXPECT_STREQ(CurrentObject()->Name, "Unnamed");
}

TEST_F(EditingTest, SortingTurnsEqualKeysRound) {
    for (const char* name : {"b", "A", "a", "B2"})
        AddSubObject(name);
    SortObject();
    EXPECT_EQ(Names(EverySubObject(CurrentObject())), (std::vector<std::string>{"A", "B2", "a", "b"}));

    struct Case {
        std::vector<double> Distances;
        int Sorts;
        std::vector<std::string> Order;
    };

    // Levels are named 0, 1, ... in list order.
    for (const Case& example : {Case{{1, 2, 2, 3}, 0, {"0", "1", "2", "3"}}, Case{{2, 1, 2}, 1, {"1", "2", "0"}},
                                Case{{3, 3, 1, 3}, 1, {"2", "3", "1", "0"}}}) {
        while (CurrentObject()->FirstLod)
            DeleteLod(CurrentObject()->FirstLod);
        for (std::size_t i = example.Distances.size(); i-- > 0;)
            AddLod(std::to_string(i).c_str())->Distance = example.Distances[i];
        EXPECT_EQ(SortLods(), example.Sorts);
        EXPECT_EQ(Names(EveryLod(CurrentObject())), example.Order);
    }

    for (const char* name : {"a", "A", "b"})
        AddObject(name, 0, 0);
    SortObjectList();
    EXPECT_EQ(Names(EveryObject(MainFile)), (std::vector<std::string>{"a", "A", "b", "Unnamed"}));
    SortObjectList();
    EXPECT_EQ(Names(EveryObject(MainFile)), (std::vector<std::string>{"A", "a", "b", "Unnamed"}));
}

} // namespace
