#include "interaction/views_test.h"

#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "support/test_seed.h"
#include "tools/amalgamation.h"
#include "tools/close_vertices.h"
#include "tools/described_model.h"
#include "tools/random_model.h"

#include <numeric>
#include <random>

namespace {

/// Joins whatever is near, again and again, until nothing changes.
std::vector<std::uint32_t> GroupsOneByOne(const std::vector<Vertex*>& vertices, double distance) {
    std::vector<std::uint32_t> first(vertices.size());
    std::iota(first.begin(), first.end(), 0U);
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = 0; i < first.size(); ++i)
            for (std::size_t j = 0; j < first.size(); ++j) {
                double square = 0;
                for (int axis = 0; axis < 3; ++axis)
                    square += std::pow(vertices[i]->Position[axis] - vertices[j]->Position[axis], 2);
                if (square < distance * distance && first[i] != first[j]) {
                    first[i] = first[j] = std::min(first[i], first[j]);
                    changed = true;
                }
            }
    }
    return first;
}

TEST(CloseVertices, AreThoseThatEveryPairTells) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const auto number = [&](int limit) { return static_cast<double>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 400; ++round) {
        // In space, in a plane, in a line; on a lattice, where distances come out equal, or off it.
        const int dimensions = 1 + round % 3;
        const double step = round % 2 ? 1 : 0.137, distance = 0.25 + number(24) / 8;
        std::vector<Vertex> records(1 + random() % 60);
        std::vector<Vertex*> vertices;
        for (Vertex& vertex : records) {
            for (int axis = 0; axis < 3; ++axis)
                vertex.Position[axis] = axis < dimensions ? number(40) * step - 3 : 0;
            vertices.push_back(&vertex);
        }
        ASSERT_EQ(GroupCloseVertices(vertices, distance), GroupsOneByOne(vertices, distance)) << "round " << round;
    }
}

TEST(CloseVertices, StrangePlacesAndDistancesAreLeftAlone) {
    Vertex nowhere{}, far{}, here{}, there{};
    nowhere.Position[1] = NAN;
    far.Position[2] = INFINITY;
    there.Position[0] = 1;
    const std::vector<Vertex*> vertices = {&nowhere, &far, &here, &there, &here};
    const std::vector<std::uint32_t> alone = {0, 1, 2, 3, 4};
    for (const double distance : {0.0, -1.0, static_cast<double>(NAN), static_cast<double>(INFINITY)})
        EXPECT_EQ(GroupCloseVertices(vertices, distance), alone) << distance;
    EXPECT_EQ(GroupCloseVertices(vertices, 1.0), (std::vector<std::uint32_t>{0, 1, 2, 3, 2})) << "nearer than 1";
    EXPECT_EQ(GroupCloseVertices(vertices, 1e-200), (std::vector<std::uint32_t>{0, 1, 2, 3, 2}));
    EXPECT_EQ(GroupCloseVertices(vertices, 1e200), (std::vector<std::uint32_t>{0, 1, 2, 2, 2}));
}

class Amalgamation : public ViewsTest {
  protected:
    /// Loose vertices in a row at these places of x, and one far away, for a radius of 100; what is joined first.
    static void Row(std::initializer_list<double> places) {
        ResetStorage();
        for (const double x : places)
            AddVertex(x, 0, 0);
        AddVertex(0, 0, 100 / 1.1);
        CleanUpObject();
        ASSERT_NEAR(ObjectRadius(), 100, 1e-3);
        AmalgamateVertices();
        Settle();
    }

    static std::vector<double> PlacesInRow() {
        std::vector<double> places;
        for (const Vertex* vertex : EveryVertex(CurrentObject()))
            if (vertex->Position[2] == 0)
                places.push_back(std::round(vertex->Position[0] * 1e6) / 1e6);
        std::sort(places.begin(), places.end());
        return places;
    }

    static Vertex* At(double x) {
        for (Vertex* vertex : EveryVertex(CurrentObject()))
            if (vertex->Position[0] == x && vertex->Position[2] == 0)
                return vertex;
        return nullptr;
    }
};

TEST_F(Amalgamation, ChainsAreJoinedInTheirFirstVertexAtTheMean) {
    struct Case {
        std::initializer_list<double> Row;
        double Gap;
        std::vector<double> DeselectedByTheUser, Joined;
    };

    const Case cases[] = {
        {{0, 0.09}, 1, {}, {0.045}},
        {{0, 0.101}, 1, {}, {0, 0.101}}, // not nearer than a thousandth
        {{0, 0.1}, 1.5, {}, {0.05}},
        {{0.16, 0, 0.08}, 1, {}, {0.08}},           // a chain
        {{0, 0.08, 0.16}, 1, {0}, {0, 0.12}},       // the next one is the first then
        {{0, 0.08, 0.16}, 1, {0.16}, {0.08, 0.16}}, // counts for the mean, and stays
        {{0, 0.08}, 1, {0}, {0, 0.08}},
        {{0, 0.08}, -3, {}, {0, 0.08}},
    };
    for (const Case& test : cases) {
        Row(test.Row);
        AmalgamateGap = test.Gap;
        FindCloseVertices();
        for (const double x : test.DeselectedByTheUser) {
            ASSERT_NE(At(x), nullptr);
            At(x)->Selected = 0;
        }
        DoAmalgamate();
        // Vertices of no polygon are deleted only as what they were joined with stands for them.
        EXPECT_EQ(PlacesInRow(), test.Joined) << "gap " << test.Gap;
        ClearControl();
        Settle();
    }
}

TEST_F(Amalgamation, RandomModelsStayWholeAndComeBack) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    for (unsigned round = 0; round < 20; ++round) {
        ResetStorage();
        RandomModel model(seed + round);
        const std::string before = DescribeObject();
        const std::size_t vertices = Vertices();
        AmalgamateVertices();
        AmalgamateGap = 40; // of a radius of about 30
        FindCloseVertices();
        for (Vertex* vertex : EveryVertex(CurrentObject()))
            if (vertex->Selected && model.Number(6) == 0)
                vertex->Selected = 0;
        DoAmalgamate();
        ClearControl();
        Settle();
        CleanUpObject();
        CheckIntegrity();
        EXPECT_LT(Vertices(), vertices);
        const std::string after = DescribeObject();
        Undo();
        CleanUpObject();
        EXPECT_EQ(DescribeObject(), before);
        Undo();
        CleanUpObject();
        EXPECT_EQ(DescribeObject(), after);
    }
}

} // namespace
