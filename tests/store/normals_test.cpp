#include "store/normals.h"

#include "geometry/vectors.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/integrity.h"
#include "store/ring_model.h"

#include <array>
#include <cmath>
#include <limits>

namespace {

class Normals : public RingModel {
  protected:
    /// Two smooth squares that share the edge from (0,0,0) to (0,1,0), the second turned up by the angle.
    void AddHinge(double degrees) {
        const double x = -std::cos(degrees * DegreesToRadians), z = std::sin(degrees * DegreesToRadians);
        CurrentLighting = LightingSmooth;
        Vertex *low = AddVertex(0, 0, 0), *high = AddVertex(0, 1, 0);
        First = AddRing({low, AddVertex(1, 0, 0), AddVertex(1, 1, 0), high});
        Second = AddRing({low, high, AddVertex(x, 1, -z), AddVertex(x, 0, -z)});
    }

    static void ExpectNormal(const float* normal, double x, double y, double z) {
        EXPECT_NEAR(normal[0], x, 1e-6);
        EXPECT_NEAR(normal[1], y, 1e-6);
        EXPECT_NEAR(normal[2], z, 1e-6);
    }

    Polygon *First = nullptr, *Second = nullptr;
};

TEST_F(Normals, PointToWhereTheRingRunsCounterClockwise) {
    const std::vector<std::vector<double>> square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

    const struct {
        const char* Name;
        std::vector<std::vector<double>> Ring;
        int Result;
        double Normal[3];
    } cases[] = {
        {"square", square, 1, {0, 0, 1}},
        {"reversed", {square.rbegin(), square.rend()}, 1, {0, 0, -1}},
        {"concave", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {3, 1, 0}}, 1, {0, 0, 1}},
        {"collinear", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, 0, {7, 7, 7}},
        {"bow tie", {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}, 0, {7, 7, 7}},
        {"edge", {{0, 0, 0}, {1, 1, 0}}, 0, {7, 7, 7}},
        {"nothing", {}, 0, {7, 7, 7}},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        Polygon* polygon = AddFace(c.Ring);
        std::fill_n(polygon->Normal, 3, 7.0F);
        EXPECT_EQ(GeneratePolygonNormal(polygon), c.Result);
        ExpectNormal(polygon->Normal, c.Normal[0], c.Normal[1], c.Normal[2]);
    }
}

TEST_F(Normals, SmoothCornersShareAMeanUpToTheCrease) {
    for (const double degrees : {90.0, 119.0}) {
        ResetStorage();
        AddHinge(degrees);
        CleanUpObject();
        const double middle = degrees / 2 * DegreesToRadians;
        for (const PolygonBead* bead : {First->Beads, Second->Beads})
            ExpectNormal(bead->Normal, -std::sin(middle), 0, std::cos(middle));
        ExpectNormal(First->Beads->Next->Normal, 0, 0, 1);
    }
    ResetStorage();
    AddHinge(130);
    CleanUpObject();
    ExpectNormal(First->Beads->Normal, 0, 0, 1);
    EXPECT_LT(Dotf(First->Beads->Normal, Second->Beads->Normal), -0.6);

    const struct {
        const char* Name;
        void (*Change)(Polygon*);
    } separations[] = {
        {"light group", [](Polygon* polygon) { polygon->LightGroup = 3; }},
        {"faceted", [](Polygon* polygon) { polygon->Lighting = LightingFaceted; }},
        {"unlit", [](Polygon* polygon) { polygon->Lighting = LightingUnlit; }},
    };

    for (const auto& separation : separations) {
        SCOPED_TRACE(separation.Name);
        ResetStorage();
        AddHinge(90);
        separation.Change(Second);
        CleanUpObject();
        ExpectNormal(First->Beads->Normal, 0, 0, 1);
    }
    ResetStorage();
    AddHinge(90);
    Polygon* moved = Second;
    UnlinkPolygon(moved);
    AddSubObject("other");
    LinkPolygon(moved, nullptr);
    CleanUpObject();
    ExpectNormal(First->Beads->Normal, 0, 0, 1);
}

TEST_F(Normals, AreSmoothedAnewWhenThePolygonsMove) {
    AddHinge(90);
    CleanUpObject();
    for (PolygonBead* bead : {Second->Beads->Next->Next, Second->Beads->Next->Next->Next})
        bead->Vertex->Position[2] = 0, bead->Vertex->Position[0] = -1;
    NormalsOK() = 0;
    CleanUpObject();
    ExpectNormal(First->Beads->Normal, 0, 0, 1);
}

TEST_F(Normals, FacetedCornersKeepTheirNormals) {
    AddHinge(90);
    Second->Lighting = LightingFaceted;
    Second->Beads->Normal[1] = 42;
    CleanUpObject();
    EXPECT_EQ(Second->Beads->Normal[1], 42);
}

/// The normals of the corners around one vertex by the plain rule: compare with the opener of every group, over the
/// whole list.
void SmoothPlainly(const std::vector<PolygonBead*>& order, std::array<float, 3>* normals) {
    std::vector<int> state(order.size(), 0);
    const float limit = cosf(2.0943952F);
    for (std::size_t start = 0; start < order.size(); ++start) {
        const Polygon* reference = order[start]->Polygon;
        if (state[start] || reference->Lighting != LightingSmooth)
            continue;
        std::vector<std::size_t> group;
        float sum[3] = {0, 0, 0};
        for (std::size_t i = start; i < order.size(); ++i) {
            const Polygon* polygon = order[i]->Polygon;
            const bool joins =
                i == start ||
                (polygon->Lighting == LightingSmooth && !state[i] && Dotf(reference->Normal, polygon->Normal) > limit &&
                 polygon->LightGroup == reference->LightGroup && polygon->SubObject == reference->SubObject);
            if (!joins)
                continue;
            for (int axis = 0; axis < 3; ++axis)
                sum[axis] = group.empty() ? polygon->Normal[axis] : sum[axis] + polygon->Normal[axis];
            group.push_back(i);
            state[i] = 1;
        }
        if (group.size() > 1)
            Normalisef(sum);
        for (const std::size_t i : group)
            std::copy_n(sum, 3, normals[i].begin());
    }
}

TEST_F(Normals, FansAgreeWithThePlainRule) {
    std::mt19937 random(20);
    for (const int size : {3, 31, 32, 33, 500}) {
        SCOPED_TRACE(size);
        ResetStorage();
        CurrentLighting = LightingSmooth;
        std::uniform_real_distribution<double> coordinate(-1, 1);
        SubObject* subObjects[2] = {SelectedSubObject(), AddSubObject("second")};
        Vertex* centre = AddVertex(0, 0, 0);
        for (int i = 0; i < size; ++i) {
            SelectedSubObject() = subObjects[random() % 2];
            Polygon* polygon = AddRing({centre, AddVertex(coordinate(random), coordinate(random), coordinate(random)),
                                        AddVertex(coordinate(random), coordinate(random), coordinate(random))});
            polygon->LightGroup = static_cast<int>(random() % 5) - 2;
            polygon->Lighting = random() % 8 ? LightingSmooth : LightingFaceted;
        }
        CleanUpObject();
        const std::vector<PolygonBead*> order = Collect(EveryUse(centre));
        std::vector<std::array<float, 3>> expected(order.size());
        SmoothPlainly(order, expected.data());
        for (std::size_t i = 0; i < order.size(); ++i) {
            const bool smooth = order[i]->Polygon->Lighting == LightingSmooth;
            EXPECT_EQ(order[i]->SmoothState, smooth ? 2 : 0);
            for (int axis = 0; smooth && axis < 3; ++axis)
                EXPECT_EQ(order[i]->Normal[axis], expected[i][axis]) << i;
        }
    }
}

TEST_F(Normals, PolygonsWithoutAreaAreDeletedWithTheirOwnVertices) {
    Vertex *a = AddVertex(0, 0, 0), *b = AddVertex(1, 0, 0);
    Polygon* good = AddRing({a, b, AddVertex(0, 1, 0)});
    AddRing({a, b, AddVertex(2, 0, 0)});
    AddRing({a, b});
    CleanUpObject();
    EXPECT_EQ(FirstPolygon(), good);
    EXPECT_EQ(Polygons(), 1U);
    EXPECT_EQ(Vertices(), 3U);
    EXPECT_EQ(a->Uses, 1);
    EXPECT_EQ(a->Beads, good->Beads);
    // One clean-up is enough: nothing is left stale.
    EXPECT_TRUE(ConnectionsOK() && NormalsOK());
    EXPECT_FALSE(VertexSelectionChanged() || PolygonSelectionChanged());
    CheckIntegrity();
}

TEST_F(Normals, AModelJustReadIsNotChangedWorkBecauseOfAPolygonWithoutArea) {
    for (const int workSaved : {1, 0}) {
        PolygonOn({AddVertex(0, 0, 0), AddVertex(1, 1, 1), AddVertex(2, 2, 2)});
        WorkSaved = workSaved;
        CleanUpObject();
        EXPECT_EQ(FirstPolygon(), nullptr);
        EXPECT_EQ(WorkSaved, workSaved);
    }
}

TEST_F(Normals, DeletedPolygonsLeaveTheSelection) {
    Polygon* polygon = AddFace({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    Vertex* apex = Corners(polygon)[2];
    apex->Selected = polygon->Selected = 1;
    CleanUpObject();
    EXPECT_TRUE(FirstSelectedVertex() && FirstSelectedPolygon());
    apex->Position[1] = 0;
    NormalsOK() = 0;
    CleanUpObject();
    EXPECT_EQ(Vertices(), 0U);
    EXPECT_FALSE(FirstSelectedVertex() || FirstSelectedPolygon());
}

TEST_F(Normals, SubPolygonsGoWithAParentWithoutArea) {
    const std::vector<std::vector<double>> flat = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}},
                                           face = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    AddFace(face);
    // The decals are older than what they are put on, so the walk would go from the parent straight to them.
    Polygon *decal = AddFace(flat), *decalOnDecal = AddFace(face), *parent = AddFace(flat);
    for (Polygon* polygon : {decal, decalOnDecal})
        UnlinkPolygon(polygon);
    UnlinkPolygon(parent);
    LinkPolygon(decalOnDecal, nullptr);
    LinkPolygon(decal, nullptr);
    LinkPolygon(parent, nullptr);
    // Moved below each other without changing the object's list.
    SubObject* subObject = parent->SubObject;
    subObject->FirstPolygon = parent;
    parent->NextSibling = decalOnDecal->NextSibling;
    parent->NextSibling->PrevSibling = parent;
    parent->FirstChild = decal;
    decal->Parent = parent;
    decal->FirstChild = decalOnDecal;
    decalOnDecal->Parent = decal;
    decal->PrevSibling = decal->NextSibling = decalOnDecal->PrevSibling = decalOnDecal->NextSibling = nullptr;
    CheckIntegrity();
    CleanUpObject();
    EXPECT_EQ(Polygons(), 1U);
    EXPECT_EQ(Vertices(), 3U);
    CheckIntegrity();
}

TEST_F(Normals, BoundsAndRadius) {
    CleanUpObject();
    EXPECT_EQ(CurrentObject()->Radius, 10.0);
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(ObjectMin()[axis], 0);
        EXPECT_EQ(ObjectMax()[axis], 0);
    }
    SubObject* first = SelectedSubObject();
    AddFace({{1, 0, 0}, {3, 0, 0}, {3, 4, 0}});
    SubObject* second = AddSubObject("second");
    AddFace({{-5, 0, 0}, {-5, 1, 0}, {-5, 1, 2}});
    AddVertex(0, -6, 1); // loose: in the object's box only
    CleanUpObject();
    const double expectedMin[3] = {-5, -6, 0}, expectedMax[3] = {3, 4, 2};
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(ObjectMin()[axis], expectedMin[axis]);
        EXPECT_EQ(ObjectMax()[axis], expectedMax[axis]);
    }
    EXPECT_DOUBLE_EQ(CurrentObject()->Radius, std::sqrt(25.0 + 36 + 4) * 1.1);
    EXPECT_EQ(first->Max[1], 4);
    EXPECT_EQ(first->Min[0], 1);
    EXPECT_EQ(second->Max[0], -5);
    EXPECT_EQ(second->Max[2], 2);
}

TEST_F(Normals, CoordinatesThatAreNoNumbersSpoilNothingElse) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CurrentLighting = LightingSmooth;
    Vertex* shared = AddVertex(0, 0, 0);
    for (int i = 0; i < 100; ++i)
        AddRing({shared, AddVertex(1, i, 0), AddVertex(0, i + 1, i % 2 ? nan : 0)});
    CleanUpObject();
    EXPECT_EQ(Polygons(), 100U);
    EXPECT_EQ(ObjectMax()[1], 100);
    EXPECT_EQ(ObjectMax()[2], 0);
    EXPECT_TRUE(std::isfinite(CurrentObject()->Radius));
    for (const PolygonBead* bead : EveryUse(shared))
        EXPECT_EQ(std::isnan(bead->Normal[0]), std::isnan(bead->Polygon->Normal[0]));
    ResetStorage();
    AddVertex(nan, nan, nan);
    CleanUpObject();
    EXPECT_EQ(CurrentObject()->Radius, 0);
}

} // namespace
