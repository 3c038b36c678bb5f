#include "tools/slicing.h"

#include "geometry/planes.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/duplicates.h"
#include "store/integrity.h"
#include "store/normals.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/creation_guards.h"
#include "tools/moving_vertices.h"
#include "tools/polygon_cutting.h"
#include "tools/polygon_operations.h"
#include "tools/sub_polygon_selection.h"
#include "views/viewports.h"

#include <cmath>
#include <unordered_map>
#include <vector>

namespace {

using Parts = std::vector<Polygon*>;

/// What became of a polygon on the two sides.
struct Slices {
    Parts Front, Back;
};

/// The Mark of parts before the plane; those behind it have 0.
constexpr int IsFront = 1;

void LoseWithVertices(Polygon* part) {
    UnlinkPolygon(part);
    for (const PolygonBead* bead : EveryBead(part))
        DeleteVertex(bead->Vertex);
    LosePolygon(part);
}

/// Without those that have no area, where the polygon only touches the plane: sub-polygons would vanish with them.
Parts Chop(const Polygon* polygon, const double* plane, SideCheck keep) {
    Parts parts = ChopPolygon(polygon, plane, keep);
    std::erase_if(parts, [](Polygon* part) {
        const bool flat = !GeneratePolygonNormal(part);
        if (flat)
            LoseWithVertices(part);
        return flat;
    });
    return parts;
}

Polygon* WholeCopy(const Polygon* polygon) {
    Polygon* copy = CopyOfPolygon(polygon, 0);
    SelectedSubObject() = polygon->SubObject;
    LinkPolygon(copy, nullptr);
    return copy;
}

Slices SlicePolygon(const Polygon* polygon, const double* plane) {
    bool before = false, behind = false;
    for (const PolygonBead* bead : EveryBead(polygon))
        (InfrontCheck(bead->Vertex, plane) ? before : behind) = true;
    Slices slices;
    if (before && behind)
        slices = {Chop(polygon, plane, InfrontCheck), Chop(polygon, plane, BehindCheck)};
    else
        (before ? slices.Front : slices.Back).push_back(WholeCopy(polygon));
    for (Polygon* part : slices.Front)
        part->Mark = IsFront;
    for (Polygon* part : slices.Back)
        part->Mark = 0;
    return slices;
}

// ---- Which of several parts of its parent a part lies on

void MeanPlace(const Polygon* polygon, double* mean) {
    int count = 0;
    for (int axis = 0; axis < 3; ++axis)
        mean[axis] = 0;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        for (int axis = 0; axis < 3; ++axis)
            mean[axis] += bead->Vertex->Position[axis];
        ++count;
    }
    for (int axis = 0; axis < 3; ++axis)
        mean[axis] /= count;
}

/// Seen along the axis to which the polygon faces most.
bool Surrounds(const Polygon* polygon, const double* point) {
    int along = 0;
    for (int axis = 1; axis < 3; ++axis)
        if (std::fabs(polygon->Normal[axis]) > std::fabs(polygon->Normal[along]))
            along = axis;
    const int x = (along + 1) % 3, y = (along + 2) % 3;
    bool inside = false;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        const double* a = bead->Vertex->Position;
        const double* b = NextInRing(polygon, bead)->Vertex->Position;
        if ((a[y] > point[y]) != (b[y] > point[y]) &&
            point[x] < a[x] + (b[x] - a[x]) * (point[y] - a[y]) / (b[y] - a[y]))
            inside = !inside;
    }
    return inside;
}

/// How many corners of the part, drawn a little towards its middle, the candidate surrounds.
int CornersOn(const Polygon* candidate, const Polygon* part) {
    double middle[3];
    MeanPlace(part, middle);
    int count = 0;
    for (const PolygonBead* bead : EveryBead(part)) {
        double point[3];
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = bead->Vertex->Position[axis] + (middle[axis] - bead->Vertex->Position[axis]) * 0.01;
        count += Surrounds(candidate, point);
    }
    return count;
}

Polygon* PartBelow(const Polygon* part, const Parts& candidates) {
    if (candidates.size() < 2)
        return candidates.empty() ? nullptr : candidates.front();
    Polygon* best = nullptr;
    int most = -1;
    for (Polygon* candidate : candidates)
        if (const int count = CornersOn(candidate, part); count > most) {
            best = candidate;
            most = count;
        }
    return best;
}

void PutOn(const Parts& parents, const Parts& parts) {
    for (Polygon* part : parts)
        if (Polygon* parent = PartBelow(part, parents))
            MovePolygon(part, parent);
}

// ---- The whole selection

/// Slices the selected polygons, and hangs the slices of sub-polygons on those of their parents.
class SelectionSlicer {
  public:
    explicit SelectionSlicer(const double* plane) : Plane(plane) {}

    void Slice() {
        const std::vector<Polygon*> originals = SelectedPolygons();
        SubObject* const selected = SelectedSubObject();
        for (const Polygon* polygon : originals)
            if (!polygon->Parent && !polygon->FirstChild)
                SlicePolygon(polygon, Plane);
            else
                InTrees.emplace(polygon, SlicePolygon(polygon, Plane));
        for (const Polygon* polygon : originals)
            if (polygon->FirstChild && NoParentSelected(polygon))
                RelinkSlices(polygon);
        SelectedSubObject() = selected;
    }

  private:
    void RelinkSlices(const Polygon* root) {
        std::vector<const Polygon*> tree;
        for (const Polygon* polygon : EverySubPolygon(root))
            tree.push_back(polygon);
        // The last first: each goes to the head of its parent's list, which keeps the order in which they are drawn.
        for (auto polygon = tree.rbegin(); polygon != tree.rend(); ++polygon) {
            const Slices& parents = InTrees.at((*polygon)->Parent);
            const Slices& slices = InTrees.at(*polygon);
            PutOn(parents.Front, slices.Front);
            PutOn(parents.Back, slices.Back);
        }
    }

    const double* Plane;
    std::unordered_map<const Polygon*, Slices> InTrees;
};

void SelectMarkedPolygons() {
    for (Polygon* polygon : EveryPolygon(CurrentObject()))
        polygon->Selected = polygon->Mark;
    PolygonSelectionChanged() = 1;
}

} // namespace

void SlicePolygons(View* view) {
    if (!SomePolygonsSelected())
        return;
    CopyCurrentObject();
    ClearAllPolygonFlags();
    SelectAllUnselectedChildren();
    double plane[4];
    GetPlaneFromTransformation(view->GridMatrix, plane);
    SelectionSlicer(plane).Slice();
    DeleteSelectedPolygons(1, 0);
    SelectMarkedPolygons();
    CleanUpObject();
    CheckIntegrity();
    DeleteDuplicateVertices();
    DetachSelectedPolygons();
    EndMove();
    DirtyModelWindows();
}
