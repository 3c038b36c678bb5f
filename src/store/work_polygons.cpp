#include "store/work_polygons.h"

#include "geometry/planes.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/walks.h"

#include <cstring>
#include <utility>

namespace {

using WorkPolyBeadList = LinkedList<&WorkPolyBead::Next, &WorkPolyBead::Prev>;

auto EveryBead(const WorkPoly* workPoly) {
    return Along<&WorkPolyBead::Next>(workPoly->FirstBead);
}

/// Where AddToWorkPoly appended last, so that long rings are built in linear time.
struct {
    const WorkPolyBead* First = nullptr;
    WorkPolyBead* Last = nullptr;
    unsigned Releases = 0;
} LastAppended;

void PositionAsFloats(const WorkPolyBead* bead, float* position) {
    for (int axis = 0; axis < 3; ++axis)
        position[axis] = static_cast<float>(bead->Position[axis]);
}

void Subtract(const float* a, const float* b, float* difference) {
    for (int axis = 0; axis < 3; ++axis)
        difference[axis] = a[axis] - b[axis];
}

/// Clips ears off one work polygon. Works on an array of its corners, the record being relinked as ears come off.
class EarClipper {
  public:
    explicit EarClipper(WorkPoly* workPoly) : Rest(workPoly) {
        for (WorkPolyBead* bead : EveryBead(workPoly)) {
            Corner& corner = Corners.emplace_back();
            corner.Bead = bead;
            PositionAsFloats(bead, corner.Position);
            corner.Next = static_cast<int>(Corners.size());
            corner.Previous = corner.Next - 2;
        }
        Remaining = static_cast<int>(Corners.size());
        Corners.front().Previous = Remaining - 1;
        Corners.back().Next = 0;
    }

    void Clip() {
        bool convex = true;
        for (int i = 0; i < static_cast<int>(Corners.size()); ++i)
            convex &= !Classify(i);
        if (convex)
            return;
        while (Remaining > 3) {
            const int ear = FindEar();
            if (ear < 0)
                return;
            Cut(ear);
        }
    }

  private:
    struct Corner {
        WorkPolyBead* Bead;
        float Position[3];
        int Previous, Next;
        int Blocker = -1; // a corner found in the triangle of this one and its present neighbours
        bool Clipped = false;
    };

    /// True when the corner is concave.
    bool Classify(int i) {
        Corner& corner = Corners[i];
        float next[3], previous[3], across[3];
        Subtract(Corners[corner.Next].Position, corner.Position, next);
        Subtract(Corners[corner.Previous].Position, corner.Position, previous);
        Crossf(next, previous, across);
        corner.Blocker = -1;
        corner.Bead->Reflex = Dotf(Rest->Normal, across) < 0;
        return corner.Bead->Reflex;
    }

    bool IsReflex(int i) const { return Corners[i].Bead->Reflex; }

    int FindEar() {
        int i = First;
        do {
            const Corner& corner = Corners[i];
            if (!IsReflex(i) && (IsReflex(corner.Previous) || IsReflex(corner.Next)) && !IsBlocked(i))
                return i;
            i = corner.Next;
        } while (i != First);
        return -1;
    }

    /// True when another corner lies in or on the triangle of corner i and its neighbours. The corner found is
    /// remembered: as long as it is there and the triangle stays the same, there is no need to look again.
    bool IsBlocked(int i) {
        Corner& corner = Corners[i];
        if (corner.Blocker >= 0 && !Corners[corner.Blocker].Clipped)
            return true;
        const int triangle[3] = {corner.Previous, i, corner.Next};
        float inward[3][3]; // across each edge, towards the inside
        for (int edge = 0; edge < 3; ++edge) {
            float along[3];
            Subtract(Corners[triangle[(edge + 1) % 3]].Position, Corners[triangle[edge]].Position, along);
            Crossf(Rest->Normal, along, inward[edge]);
        }
        const auto isInside = [&](const float* point) {
            for (int edge = 0; edge < 3; ++edge) {
                float offset[3];
                Subtract(point, Corners[triangle[edge]].Position, offset);
                if (!(Dotf(offset, inward[edge]) >= 0))
                    return false;
            }
            return true;
        };
        for (int other = Corners[corner.Next].Next; other != corner.Previous; other = Corners[other].Next)
            if (isInside(Corners[other].Position)) {
                corner.Blocker = other;
                return true;
            }
        return false;
    }

    void Cut(int i) {
        Corner& corner = Corners[i];
        Corner &previous = Corners[corner.Previous], &next = Corners[corner.Next];
        WorkPolyBeadList::Remove(Rest->FirstBead, corner.Bead);
        MoveToTriangle(previous.Bead, corner.Bead, next.Bead);

        corner.Clipped = true;
        previous.Next = corner.Next;
        next.Previous = corner.Previous;
        if (First == i)
            First = corner.Next;
        --Remaining;
        Classify(corner.Previous);
        Classify(corner.Next);
    }

    void MoveToTriangle(const WorkPolyBead* previous, WorkPolyBead* clipped, const WorkPolyBead* next) {
        WorkPoly* triangle = NewWorkPoly();
        CopyWorkPolyInfo(triangle, Rest);
        WorkPolyBead* last = nullptr;
        const auto append = [&](WorkPolyBead* bead) { WorkPolyBeadList::Append(triangle->FirstBead, last, bead); };
        const auto copyOf = [](const WorkPolyBead* bead) {
            WorkPolyBead* copy = NewWorkPolyBead();
            CopyWorkPolyBeadInfo(copy, bead);
            copy->Reflex = 0;
            return copy;
        };
        append(copyOf(previous));
        append(clipped);
        append(copyOf(next));

        triangle->Parent = Rest;
        triangle->FirstChild = std::exchange(Rest->FirstChild, triangle);
        for (WorkPoly* child : Along<&WorkPoly::Next>(triangle->FirstChild))
            child->Parent = triangle;
    }

    WorkPoly* Rest;
    std::vector<Corner> Corners;
    int First = 0;
    int Remaining;
};

PolygonBead* RingOf(const WorkPoly* workPoly, bool textured, const Matrix* transform) {
    PolygonBead* ring = nullptr;
    for (const WorkPolyBead* bead : EveryBead(workPoly)) {
        double position[3];
        std::memcpy(position, bead->Position, sizeof position);
        if (transform)
            TransformCoordinate(position, *transform, position);
        PolygonBead* corner = AddPolygonBead(ring, AddVertex(position[0], position[1], position[2]));
        if (textured)
            std::memcpy(corner->TexCoord, bead->TexCoord, sizeof corner->TexCoord);
    }
    return ring;
}

} // namespace

WorkPolyBead* AddToWorkPoly(WorkPoly* workPoly, const double* position) {
    WorkPolyBead* bead = NewWorkPolyBead();
    if (position)
        std::memcpy(bead->Position, position, sizeof bead->Position);
    const bool known = LastAppended.First == workPoly->FirstBead && LastAppended.Releases == WorkPolyReleases;
    WorkPolyBead* last = LastWorkPolyBead(known ? LastAppended.Last : workPoly->FirstBead);
    WorkPolyBeadList::Append(workPoly->FirstBead, last, bead);
    LastAppended = {workPoly->FirstBead, bead, WorkPolyReleases};
    return bead;
}

void ForgetLastWorkPolyBead() {
    LastAppended = {};
}

WorkPolyBead* LastWorkPolyBead(WorkPolyBead* bead) {
    return LastAlong<&WorkPolyBead::Next>(bead);
}

void CopyWorkPolyInfo(WorkPoly* destination, const WorkPoly* source) {
    std::memcpy(destination->Normal, source->Normal, sizeof destination->Normal);
}

void CopyWorkPolyBeadInfo(WorkPolyBead* destination, const WorkPolyBead* source) {
    std::memcpy(destination->Position, source->Position, sizeof destination->Position);
    std::memcpy(destination->TexCoord, source->TexCoord, sizeof destination->TexCoord);
}

void ReverseWorkPoly(WorkPoly* workPoly) {
    for (WorkPolyBead* bead : EveryBead(workPoly)) {
        std::swap(bead->Next, bead->Prev);
        workPoly->FirstBead = bead;
    }
}

int CalcWorkPolyNormal(WorkPoly* workPoly) {
    const WorkPolyBead* first = workPoly->FirstBead;
    float sum[3] = {0, 0, 0};
    for (const WorkPolyBead* bead : EveryBead(workPoly)) {
        float current[3], next[3];
        PositionAsFloats(bead, current);
        PositionAsFloats(bead->Next ? bead->Next : first, next);
        AddNewellEdge(current, next, sum);
    }
    if (!Normalisef(sum))
        return 0;
    std::memcpy(workPoly->Normal, sum, sizeof sum);
    return 1;
}

int CalcWorkPolyPlane(WorkPoly* workPoly, double* plane) {
    if (!CalcWorkPolyNormal(workPoly))
        return 0;
    for (int axis = 0; axis < 3; ++axis)
        plane[axis] = workPoly->Normal[axis];
    CalcPlaneD(plane, workPoly->FirstBead->Position);
    return 1;
}

int PolysInWorkPoly(WorkPoly* first) {
    int count = 0;
    ForEveryWorkPoly(first, [&](const WorkPoly*) { ++count; });
    return count;
}

void MakeWorkPolyConvex(WorkPoly* workPoly) {
    if (!workPoly->FirstBead)
        return;
    CalcWorkPolyNormal(workPoly);
    EarClipper(workPoly).Clip();
    ForgetLastWorkPolyBead();
}

void AddWorkPolyToModel(WorkPoly* first, Texture* texture, int doubleSided, const Matrix* transform) {
    ForEveryWorkPoly(first, [&](const WorkPoly* workPoly) {
        if (!workPoly->FirstBead)
            return;
        Polygon* polygon = AddPolygon(RingOf(workPoly, texture, transform), nullptr);
        if (texture) {
            polygon->Texture = texture;
            polygon->TextureMaterial = CurrentMaterial();
        }
        if (doubleSided) {
            Polygon* back = CopyOfPolygon(polygon, 0);
            ReversePolygon(back);
            LinkPolygon(back, nullptr);
        }
    });
}
