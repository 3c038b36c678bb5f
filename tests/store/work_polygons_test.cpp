#include "store/work_polygons.h"

#include "geometry/vectors.h"
#include "store/clean_up.h"
#include "store/pools.h"
#include "store/ring_model.h"
#include "support/test_seed.h"

#include <cmath>

namespace {

struct Point {
    double X, Y;

    bool operator==(const Point&) const = default;
};

void PrintTo(const Point& point, std::ostream* stream) {
    *stream << point.X << ' ' << point.Y;
}

using Ring = std::vector<Point>;

class WorkPolygons : public RingModel {
  protected:
    void TearDown() override {
        if (Work)
            FreeWorkPoly(Work);
        RingModel::TearDown();
    }

    /// The work polygon of the test, in the plane z = 1.
    WorkPoly* Outline(const Ring& ring) {
        if (Work)
            FreeWorkPoly(Work);
        Work = NewWorkPoly();
        for (const Point& point : ring) {
            const double position[3] = {point.X, point.Y, 1};
            AddToWorkPoly(Work, position);
        }
        return Work;
    }

    static Ring RingOf(const WorkPoly* workPoly) {
        Ring ring;
        const WorkPolyBead* previous = nullptr;
        for (const WorkPolyBead* bead = workPoly->FirstBead; bead; previous = bead, bead = bead->Next) {
            EXPECT_EQ(bead->Prev, previous);
            ring.push_back({bead->Position[0], bead->Position[1]});
        }
        return ring;
    }

    /// Every ring of the tree, in the order of the walks.
    static std::vector<Ring> Rings(WorkPoly* first) {
        std::vector<Ring> rings;
        ForEveryWorkPoly(first, [&](const WorkPoly* workPoly) { rings.push_back(RingOf(workPoly)); });
        return rings;
    }

    WorkPoly* Work = nullptr;
};

double Turn(const Point& a, const Point& b, const Point& c) {
    return (b.X - a.X) * (c.Y - b.Y) - (b.Y - a.Y) * (c.X - b.X);
}

double Area(const Ring& ring) {
    double area = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &a = ring[i], &b = ring[(i + 1) % ring.size()];
        area += (a.X * b.Y - a.Y * b.X) / 2;
    }
    return area;
}

bool IsReflexAt(const Ring& ring, std::size_t i) {
    const std::size_t size = ring.size();
    return Turn(ring[(i + size - 1) % size], ring[i], ring[(i + 1) % size]) < 0;
}

/// Clips by the plain rule, from the first corner on at each step; the triangles in the order in which they come off,
/// then what is left.
std::vector<Ring> ClipPlainly(Ring ring) {
    std::vector<Ring> pieces;
    const auto clipOne = [&] {
        const std::size_t size = ring.size();
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t before = (i + size - 1) % size, after = (i + 1) % size;
            if (IsReflexAt(ring, i) || !(IsReflexAt(ring, before) || IsReflexAt(ring, after)))
                continue;
            const Point &p = ring[before], &b = ring[i], &n = ring[after];
            bool blocked = false;
            for (std::size_t j = 0; j < size; ++j)
                blocked |= j != before && j != i && j != after && Turn(p, b, ring[j]) >= 0 &&
                           Turn(b, n, ring[j]) >= 0 && Turn(n, p, ring[j]) >= 0;
            if (blocked)
                continue;
            pieces.push_back({p, b, n});
            ring.erase(ring.begin() + static_cast<std::ptrdiff_t>(i));
            return true;
        }
        return false;
    };
    while (ring.size() > 3 && clipOne())
        ;
    pieces.push_back(ring);
    return pieces;
}

TEST_F(WorkPolygons, CornersAreAppended) {
    Outline({{0, 0}, {1, 0}});
    WorkPolyBead* unset = AddToWorkPoly(Work, nullptr);
    EXPECT_EQ(LastWorkPolyBead(Work->FirstBead), unset);
    EXPECT_EQ(LastWorkPolyBead(unset), unset);
    EXPECT_EQ(RingOf(Work), (Ring{{0, 0}, {1, 0}, {0, 0}}));
    // After a reversal, and in turn with another polygon.
    ReverseWorkPoly(Work);
    WorkPoly* other = Work->Next = NewWorkPoly();
    const double a[3] = {5, 0, 0}, b[3] = {6, 0, 0};
    AddToWorkPoly(Work, a);
    AddToWorkPoly(other, b);
    AddToWorkPoly(Work, b);
    AddToWorkPoly(other, a);
    EXPECT_EQ(RingOf(Work), (Ring{{0, 0}, {1, 0}, {0, 0}, {5, 0}, {6, 0}}));
    EXPECT_EQ(RingOf(other), (Ring{{6, 0}, {5, 0}}));
}

TEST_F(WorkPolygons, AppendingForgetsWhatIsGone) {
    Outline({{1, 1}, {2, 2}, {3, 3}});
    const WorkPolyBead* first = Work->FirstBead;
    FreeWorkPoly(Work);
    // The first corner comes back from the pool as that of another polygon.
    Work = NewWorkPoly();
    Work->FirstBead = NewWorkPolyBead();
    ASSERT_EQ(Work->FirstBead, first);
    const double position[3] = {7, 7, 0};
    AddToWorkPoly(Work, position);
    EXPECT_EQ(RingOf(Work), (Ring{{0, 0}, {7, 7}}));
}

TEST_F(WorkPolygons, Reverse) {
    const Ring rings[] = {{}, {{1, 1}}, {{1, 1}, {2, 2}}, {{0, 0}, {1, 0}, {1, 1}}};
    for (const Ring& ring : rings) {
        ReverseWorkPoly(Outline(ring));
        EXPECT_EQ(RingOf(Work), Ring(ring.rbegin(), ring.rend()));
    }
}

TEST_F(WorkPolygons, NormalAndPlane) {
    double plane[4] = {9, 9, 9, 9};
    Outline({{0, 0}, {2, 0}, {2, 2}});
    EXPECT_EQ(CalcWorkPolyPlane(Work, plane), 1);
    EXPECT_EQ(std::vector<double>(plane, plane + 4), (std::vector<double>{0, 0, 1, -1}));
    ReverseWorkPoly(Work);
    EXPECT_EQ(Work->Normal[2], 1);
    EXPECT_EQ(CalcWorkPolyNormal(Work), 1);
    EXPECT_EQ(Work->Normal[2], -1);
    for (const Ring& flat : {Ring{}, Ring{{1, 1}}, Ring{{0, 0}, {1, 1}, {2, 2}}}) {
        Outline(flat)->Normal[2] = 8;
        plane[3] = 9;
        EXPECT_EQ(CalcWorkPolyPlane(Work, plane), 0);
        EXPECT_EQ(Work->Normal[2], 8);
        EXPECT_EQ(plane[3], 9);
    }
}

TEST_F(WorkPolygons, ConvexOnesStayWhole) {
    const Ring rings[] = {
        {},
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}},
        {{0, 0}, {0, 1}, {1, 1}, {1, 0}},
        {{0, 0}, {1, 0}, {2, 0}, {2, 2}},
        {{0, 0}, {0, 1}, {1, 0}},
    };
    for (const Ring& ring : rings) {
        MakeWorkPolyConvex(Outline(ring));
        EXPECT_EQ(PolysInWorkPoly(Work), 1);
        EXPECT_EQ(RingOf(Work), ring);
    }
}

TEST_F(WorkPolygons, LShapeIsSplitNextToItsConcaveCorner) {
    Outline({{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}});
    WorkPoly* oldChild = Work->FirstChild = NewWorkPoly();
    oldChild->Parent = Work;
    MakeWorkPolyConvex(Work);
    EXPECT_EQ(PolysInWorkPoly(Work), 4);
    EXPECT_EQ(RingOf(Work), (Ring{{0, 0}, {1, 1}, {1, 2}, {0, 2}}));
    WorkPoly *second = Work->FirstChild, *first = second->FirstChild;
    EXPECT_EQ(RingOf(first), (Ring{{2, 0}, {2, 1}, {1, 1}}));
    EXPECT_EQ(RingOf(second), (Ring{{0, 0}, {2, 0}, {1, 1}}));
    EXPECT_EQ(first->FirstChild, oldChild);
    EXPECT_EQ(oldChild->Parent, first);
    EXPECT_EQ(first->Parent, second);
    EXPECT_EQ(second->Parent, Work);
    EXPECT_EQ(first->Normal[2], 1);
}

TEST_F(WorkPolygons, FirstCornerMayBeClipped) {
    Outline({{2, 1}, {1, 1}, {1, 2}, {0, 2}, {0, 0}, {2, 0}});
    MakeWorkPolyConvex(Work);
    EXPECT_EQ(RingOf(Work), (Ring{{1, 1}, {0, 2}, {0, 0}, {2, 0}}));
    EXPECT_EQ(RingOf(Work->FirstChild->FirstChild), (Ring{{2, 0}, {2, 1}, {1, 1}}));
}

TEST_F(WorkPolygons, RandomOutlinesAreSplitByThePlainRule) {
    const unsigned seed = TestSeed();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 500; ++round) {
        // On whole numbers, so that floats are exact and corners fall on edges: stars, and strips with ragged sides,
        // where corners are blocked from across and come free again.
        const int size = 4 + static_cast<int>(random() % 40);
        Ring ring;
        for (int i = 0; i < size && round % 2; ++i) {
            const double angle = 2 * M_PI * i / size, radius = 20 + random() % 200;
            ring.push_back({std::round(radius * std::cos(angle)), std::round(radius * std::sin(angle))});
        }
        if (round % 2 == 0) {
            for (int i = 0; i < size; ++i)
                ring.push_back({1.0 * i, -static_cast<double>(random() % 50)});
            for (int i = size; i-- > 0;)
                ring.push_back({1.0 * i, 1 + static_cast<double>(random() % 50)});
        }
        if (Area(ring) <= 0)
            continue;
        const std::vector<Ring> expected = ClipPlainly(ring);
        MakeWorkPolyConvex(Outline(ring));
        const std::vector<Ring> pieces = Rings(Work);
        // The oldest triangle lies deepest, so the walk meets the pieces in the order in which they came off.
        ASSERT_EQ(pieces, expected);
        double area = 0;
        for (const Ring& piece : pieces)
            area += Area(piece);
        ASSERT_DOUBLE_EQ(area, Area(ring));
        // Even when the corner that was appended last has been clipped off.
        AddToWorkPoly(Work, nullptr);
        ASSERT_EQ(RingOf(Work).size(), expected.back().size() + 1);
    }
}

TEST_F(WorkPolygons, DeepTreesAreWalked) {
    // A comb, clipped into as many levels as it has notches.
    Ring ring;
    const int teeth = 2000;
    for (int i = 0; i < teeth; ++i) {
        ring.push_back({2.0 * i, 0});
        ring.push_back({2.0 * i + 1, 1});
    }
    ring.push_back({2.0 * teeth, 0});
    ring.push_back({2.0 * teeth, 50});
    ring.push_back({0, 50});
    MakeWorkPolyConvex(Outline(ring));
    EXPECT_GT(PolysInWorkPoly(Work), teeth);
    double area = 0;
    for (const Ring& piece : Rings(Work))
        area += Area(piece);
    EXPECT_DOUBLE_EQ(area, Area(ring));
}

TEST_F(WorkPolygons, CommittedToTheModel) {
    Texture texture{};
    Material material{}, textureMaterial{};
    CurrentLighting = LightingSmooth;
    Outline({{0, 0}, {1, 0}, {1, 1}});
    Work->FirstBead->TexCoord[0] = 0.25F;
    WorkPoly* child = Work->FirstChild = NewWorkPoly();
    child->Parent = Work;
    const double corners[3][3] = {{5, 0, 0}, {6, 0, 0}, {6, 1, 0}};
    for (const auto& corner : corners)
        AddToWorkPoly(child, corner);
    Work->Next = NewWorkPoly(); // without beads
    Work->Next->Prev = Work;

    CurrentMaterial() = &material;
    AddWorkPolyToModel(Work, nullptr, 0, nullptr);
    EXPECT_EQ(Polygons(), 2U);
    EXPECT_EQ(Vertices(), 6U);
    // Children first, and the newest polygon heads the list.
    EXPECT_EQ(FirstPolygon()->Beads->Vertex->Position[2], 1);
    EXPECT_EQ(FirstPolygon()->Next->Beads->Vertex->Position[0], 5);
    EXPECT_EQ(FirstPolygon()->Material, &material);
    EXPECT_EQ(FirstPolygon()->Lighting, LightingSmooth);
    EXPECT_EQ(FirstPolygon()->Texture, nullptr);
    EXPECT_EQ(FirstPolygon()->Beads->TexCoord[0], 0);

    ResetStorage();
    CurrentMaterial() = &textureMaterial;
    AddWorkPolyToModel(Work, &texture, 1, &TranslationMatrix(0, 0, 10));
    EXPECT_EQ(Polygons(), 4U);
    CleanUpObject();
    const Polygon *back = FirstPolygon(), *front = back->Next;
    EXPECT_EQ(front->Texture, &texture);
    EXPECT_EQ(front->TextureMaterial, &textureMaterial);
    EXPECT_EQ(front->Beads->TexCoord[0], 0.25F);
    EXPECT_EQ(front->Beads->Vertex->Position[2], 11);
    EXPECT_EQ(back->Texture, &texture);
    std::vector<Vertex*> reversed = Corners(front);
    std::reverse(reversed.begin(), reversed.end());
    EXPECT_EQ(Corners(back), reversed);
    EXPECT_EQ(Vertices(), 6U);
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        EXPECT_EQ(vertex->Uses, 2);
    CurrentMaterial() = nullptr;
}

} // namespace
