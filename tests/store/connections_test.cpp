#include "store/connections.h"

#include "store/pools.h"
#include "store/ring_model.h"

#include <map>
#include <string>

namespace {

class Connections : public RingModel {};

TEST_F(Connections, CountUsesAndListBeadsLastFirst) {
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(1, 1, 0), *loose = AddVertex(9, 9, 9);
    Polygon* first = AddRing({a, b, c});
    Polygon* second = AddRing({a, c, b});
    Polygon* bowTie = AddRing({a, b, a, c});
    loose->Uses = 5;
    EXPECT_EQ(MakeConnections(), 4U);
    EXPECT_EQ(a->Uses, 4);
    EXPECT_EQ(b->Uses, 3);
    EXPECT_EQ(loose->Uses, 0);
    EXPECT_EQ(loose->Beads, nullptr);
    // The newest polygon heads the object's list, so the oldest polygon's bead is met last.
    std::vector<Polygon*> users;
    for (const PolygonBead* bead : EveryUse(a))
        users.push_back(bead->Polygon);
    EXPECT_EQ(users, (std::vector<Polygon*>{first, second, bowTie, bowTie}));
    EXPECT_EQ(a->Beads->NextOnVertex->NextOnVertex, bowTie->Beads->Next->Next);
}

TEST_F(Connections, LeaveTheirFlagAlone) {
    AddGrid(1, 1);
    MakeConnections();
    EXPECT_EQ(ConnectionsOK(), 0);
    ConnectionsOK() = 1;
    MakeConnections();
    EXPECT_EQ(ConnectionsOK(), 1);
}

TEST_F(Connections, RepeatedCornersCollapse) {
    // Each letter is a vertex; u of the n-th corner is n before, and the expected text gives u after each corner.
    const struct {
        const char* Ring;
        const char* Expected;
        std::vector<float> U;
    } cases[] = {
        {"ABC", "ABC", {0, 1, 2}},
        {"AABC", "ABC", {0.5F, 2, 3}},
        {"ABCA", "ABC", {1.5F, 1, 2}},
        {"ABBBC", "ABC", {0, 2.25F, 4}},
        {"AABCAA", "ABC", {2.5F, 2, 3}},
        {"ABAC", "ABAC", {0, 1, 2, 3}},
        {"ABA", "AB", {1, 1}},
        {"AAAA", "A", {2.125F}},
        {"A", "A", {0}},
        {"", "", {}},
    };

    std::map<Vertex*, char> letters;
    std::map<char, Vertex*> vertices;
    for (const char letter : {'A', 'B', 'C'})
        letters[vertices[letter] = AddVertex(letter, 0, 0)] = letter;
    Texture texture{};
    for (const bool textured : {true, false})
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(c.Ring) + (textured ? " textured" : ""));
            std::vector<Vertex*> corners;
            for (const char letter : std::string(c.Ring))
                corners.push_back(vertices[letter]);
            Polygon* polygon = AddRing(corners);
            polygon->Texture = textured ? &texture : nullptr;
            float u = 0;
            for (PolygonBead* bead : EveryBead(polygon))
                bead->TexCoord[0] = u++;
            const PolygonBead* first = polygon->Beads;
            SussMinkyPolygons();
            EXPECT_EQ(polygon->Beads, first);
            std::string ring;
            std::vector<float> us;
            for (const PolygonBead* bead : EveryBead(polygon)) {
                ring += letters[bead->Vertex];
                us.push_back(bead->TexCoord[0]);
            }
            EXPECT_EQ(ring, c.Expected);
            if (textured)
                EXPECT_EQ(us, c.U);
            else
                EXPECT_TRUE(std::all_of(us.begin(), us.end(), [](float value) { return value == std::floor(value); }));
            DeletePolygon(polygon, 0);
        }
}

TEST_F(Connections, CollapsingMakesConnectionsStale) {
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0), *c = AddVertex(1, 1, 0);
    AddRing({a, b, c});
    ConnectionsOK() = WorkSaved = 1;
    SussMinkyPolygons();
    EXPECT_TRUE(ConnectionsOK() && WorkSaved);
    AddRing({a, b, b});
    ConnectionsOK() = WorkSaved = 1;
    SussMinkyPolygons();
    EXPECT_FALSE(ConnectionsOK() || WorkSaved);
}

TEST_F(Connections, FlagsOfTheSelectedLevel) {
    const auto face = [](Polygon* parent) { return AddFace({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, parent); };
    SubObject* shown = SelectedSubObject();
    Polygon *top = face(nullptr), *child = face(top), *grandchild = face(child), *secondTop = face(nullptr);
    AddSubObject("hidden");
    Polygon* hidden = face(nullptr);
    AddLod("level");
    AddLodBead(shown);
    SetAllPolygonFlags();
    FlagPolygonsInLod(0);
    EXPECT_EQ(top->Mark + child->Mark + grandchild->Mark + secondTop->Mark, 0);
    EXPECT_EQ(hidden->Mark, 1);
    ClearAllPolygonFlags();
    EXPECT_EQ(hidden->Mark, 0);
    SelectedLod() = nullptr;
    FlagPolygonsInLod(1);
    EXPECT_EQ(top->Mark, 0);
    FlagSubPolygons(child, 7);
    EXPECT_EQ(child->Mark, 7);
    EXPECT_EQ(grandchild->Mark, 7);
    EXPECT_EQ(top->Mark, 0);
    FlagSubPolygons(nullptr, 1);
}

} // namespace
