#include "store/clean_up.h"

#include "store/normals.h"
#include "store/ring_model.h"
#include "store/selection_lists.h"

namespace {

class CleanUp : public RingModel {};

TEST_F(CleanUp, EmptyObjectIsInOrderAfterwards) {
    CurrentObject();
    CleanUpObject();
    EXPECT_TRUE(ConnectionsOK() && NormalsOK());
    EXPECT_FALSE(FirstSelectedVertex() || FirstLooseVertex() || FirstSelectedPolygon());
    EXPECT_EQ(ObjectRadius(), 10.0);
}

TEST_F(CleanUp, SelectionListsStartWithTheLastOfTheObject) {
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(0, 1, 0);
    Vertex *looseOld = AddVertex(5, 5, 5), *looseNew = AddVertex(6, 6, 6), *looseSelected = AddVertex(7, 7, 7);
    Polygon *first = AddRing({a, b, c}), *second = AddRing({c, b, a});
    AddRing({a, c, b});
    for (Vertex* vertex : {a, c, looseSelected})
        vertex->Selected = 1;
    first->Selected = second->Selected = 1;
    LastSelectionWasQstrip = 1;
    CleanUpObject();
    EXPECT_EQ(Collect(Along<&Vertex::NextInSubset>(FirstSelectedVertex())),
              (std::vector<Vertex*>{a, c, looseSelected}));
    EXPECT_EQ(Collect(Along<&Vertex::NextInSubset>(FirstLooseVertex())), (std::vector<Vertex*>{looseOld, looseNew}));
    EXPECT_EQ(Collect(Along<&Polygon::NextSelected>(FirstSelectedPolygon())), (std::vector<Polygon*>{first, second}));
    EXPECT_FALSE(LastSelectionWasQstrip || VertexSelectionChanged() || PolygonSelectionChanged());
}

TEST_F(CleanUp, DoesOnlyWhatIsStale) {
    AddGrid(2, 2);
    CleanUpObject();
    Vertex* vertex = FirstVertex();
    Polygon* polygon = FirstPolygon();

    // Everything in order: what was spoilt by hand stays so.
    vertex->Uses = 77;
    polygon->Normal[0] = 5;
    vertex->Selected = polygon->Selected = 1;
    CleanUpObject();
    EXPECT_EQ(vertex->Uses, 77);
    EXPECT_EQ(polygon->Normal[0], 5);
    EXPECT_FALSE(FirstSelectedVertex() || FirstSelectedPolygon());

    VertexSelectionChanged() = 1;
    CleanUpObject();
    EXPECT_EQ(FirstSelectedVertex(), vertex);
    EXPECT_EQ(FirstSelectedPolygon(), nullptr);

    PolygonSelectionChanged() = 1;
    CleanUpObject();
    EXPECT_EQ(FirstSelectedPolygon(), polygon);
    EXPECT_EQ(polygon->Normal[0], 5);

    NormalsOK() = 0;
    CleanUpObject();
    EXPECT_EQ(polygon->Normal[0], 0);
    EXPECT_EQ(vertex->Uses, 77);

    ConnectionsOK() = 0;
    polygon->Normal[0] = 5;
    CleanUpObject();
    EXPECT_NE(vertex->Uses, 77);
    EXPECT_EQ(polygon->Normal[0], 0);
}

TEST_F(CleanUp, SortsTheObjectWhenConnectionsAreStale) {
    for (const char* name : {"b", "a", "c"})
        AddSubObject(name);
    CleanUpObject();
    EXPECT_EQ(Names(EverySubObject(CurrentObject())), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(CleanUp, RadiusIsCurrentWhenAskedFor) {
    AddVertex(3, 4, 0);
    EXPECT_DOUBLE_EQ(ObjectRadius(), 5.5);
    AddVertex(30, 40, 0);
    EXPECT_DOUBLE_EQ(ObjectRadius(), 55);
    AddVertex(300, 400, 0);
    SussingRadius = 1;
    EXPECT_DOUBLE_EQ(ObjectRadius(), 55);
    SussingRadius = 0;
}

TEST_F(CleanUp, RadiusGrowsWithPointsOutside) {
    AddVertex(3, 4, 0);
    const double inside[3] = {1, 1, 1}, outside[3] = {0, 0, 20};
    ChangeObjectRadius(inside);
    EXPECT_DOUBLE_EQ(ObjectRadius(), 5.5);
    ChangeObjectRadius(outside);
    EXPECT_DOUBLE_EQ(ObjectRadius(), 22);
}

} // namespace
