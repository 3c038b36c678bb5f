#include "store/normals.h"

#include "base/debug.h"
#include "geometry/boxes.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/connections.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <span>
#include <tuple>
#include <unordered_set>
#include <vector>

int SussingRadius;
int KeepPolygonsWithoutArea;

namespace {

/// Around a vertex with more corners than this the light groups are told apart by sorting: comparing each corner with
/// the first of every group would be quadratic when the groups are many.
constexpr std::size_t FewCorners = 32;

/// Polygons whose normals differ by more do not share a smoothed normal.
constexpr float CreaseAngle = 2.0943952F; // radians, 120 degrees

void CopyNormal(float* destination, const float* source) {
    std::memcpy(destination, source, 3 * sizeof(float));
}

auto SmoothingKey(const Polygon* polygon) {
    return std::tuple(polygon->LightGroup, polygon->SubObject);
}

/// Averages normals over the smooth corners around one vertex after the other.
class CornerSmoother {
  public:
    void Smooth(const Vertex* vertex) {
        Corners.clear();
        for (PolygonBead* bead : EveryUse(vertex)) {
            bead->SmoothState = 0;
            if (bead->Polygon->Lighting == LightingSmooth)
                Corners.push_back(bead);
        }
        if (Corners.size() <= FewCorners)
            SmoothGroups(Corners);
        else
            SmoothManyCorners();
    }

  private:
    /// Corners of different light groups or sub-objects never meet in a group, so each kind can be done by itself.
    void SmoothManyCorners() {
        const auto before = [](const PolygonBead* a, const PolygonBead* b) {
            const Polygon *p = a->Polygon, *q = b->Polygon;
            if (p->LightGroup != q->LightGroup)
                return p->LightGroup < q->LightGroup;
            return std::less<>()(p->SubObject, q->SubObject);
        };
        std::stable_sort(Corners.begin(), Corners.end(), before);
        for (auto first = Corners.begin(); first != Corners.end();) {
            const auto last = std::find_if(first, Corners.end(), [&](const PolygonBead* bead) {
                return SmoothingKey(bead->Polygon) != SmoothingKey((*first)->Polygon);
            });
            SmoothGroups({first, last});
            first = last;
        }
    }

    /// Each group is opened by the first corner that is in none, and takes in those that match its opener. Normals of
    /// one kind fall into three groups at most, since three directions at more than 120 degrees do not exist.
    void SmoothGroups(std::span<PolygonBead* const> corners) const {
        for (std::size_t i = 0; i < corners.size(); ++i)
            if (!corners[i]->SmoothState)
                SmoothGroup(corners.subspan(i));
    }

    void SmoothGroup(std::span<PolygonBead* const> corners) const {
        PolygonBead* opener = corners.front();
        const Polygon* reference = opener->Polygon;
        float sum[3];
        CopyNormal(sum, reference->Normal);
        const double square = Dotf(sum, sum);
        if (std::isnan(square) || corners.size() == 1) {
            // Nothing can match it: not worth looking, however many there are.
            CopyNormal(opener->Normal, sum);
            opener->SmoothState = 2;
            return;
        }
        opener->SmoothState = 1;
        bool several = false;
        for (PolygonBead* bead : corners.subspan(1)) {
            const Polygon* polygon = bead->Polygon;
            if (bead->SmoothState || SmoothingKey(polygon) != SmoothingKey(reference) ||
                !(Dotf(reference->Normal, polygon->Normal) > CreaseLimit))
                continue;
            for (int axis = 0; axis < 3; ++axis)
                sum[axis] += polygon->Normal[axis];
            bead->SmoothState = 1;
            several = true;
        }
        if (several)
            Normalisef(sum);
        for (PolygonBead* bead : corners)
            if (bead->SmoothState == 1) {
                CopyNormal(bead->Normal, sum);
                bead->SmoothState = 2;
            }
    }

    const double CreaseLimit = std::cos(CreaseAngle);
    std::vector<PolygonBead*> Corners;
};

/// Sets the normals of the polygons; returns those that have none.
std::vector<Polygon*> GeneratePolygonNormals(const Object* object) {
    std::vector<Polygon*> flat;
    for (Polygon* polygon : EveryPolygon(object))
        if (!GeneratePolygonNormal(polygon))
            flat.push_back(polygon);
    return flat;
}

/// Deletes polygons of one object in list order; returns how many were not gone already with their parents.
int DeletePolygons(const std::vector<Polygon*>& polygons) {
    int deleted = 0;
    std::unordered_set<const Polygon*> gone;
    for (Polygon* polygon : polygons) {
        if (gone.contains(polygon))
            continue;
        for (const Polygon* subPolygon : EverySubPolygon(polygon))
            gone.insert(subPolygon);
        DeletePolygon(polygon, 1);
        ++deleted;
    }
    return deleted;
}

/// The boxes of the object and of its sub-objects, and the normals of smooth corners, in one walk: both need every
/// vertex with its beads, and fetching these is most of the work.
void BoundAndSmooth(Object* object) {
    double min[3], max[3];
    EmptyBox(min, max);
    for (SubObject* subObject : EverySubObject(object))
        EmptyBox(subObject->Min, subObject->Max);
    CornerSmoother smoother;
    for (const Vertex* vertex : EveryVertex(object)) {
        GrowBox(min, max, vertex->Position);
        const SubObject* grown = nullptr;
        for (const PolygonBead* bead : EveryUse(vertex)) {
            SubObject* subObject = bead->Polygon->SubObject;
            if (subObject != grown)
                GrowBox(subObject->Min, subObject->Max, vertex->Position);
            grown = subObject;
        }
        smoother.Smooth(vertex);
    }
    std::copy_n(min, 3, object->Min);
    std::copy_n(max, 3, object->Max);
}

/// The radius about the origin, a tenth larger than the box demands.
void SetRadius(Object* object) {
    SussingRadius = 1;
    double reach[3];
    for (int axis = 0; axis < 3; ++axis) {
        // Empty without vertices, or without one whose coordinate is a number.
        if (object->Min[axis] > object->Max[axis])
            object->Min[axis] = object->Max[axis] = 0;
        reach[axis] = std::max(std::fabs(object->Min[axis]), std::fabs(object->Max[axis]));
    }
    object->Radius = object->FirstVertex ? LengthOfVector(reach) * 1.1 : 10.0;
    SussingRadius = 0;
}

} // namespace

int GeneratePolygonNormal(Polygon* polygon) {
    double sum[3] = {0, 0, 0};
    for (const PolygonBead* bead : EveryBead(polygon))
        AddNewellEdge(bead->Vertex->Position, NextInRing(polygon, bead)->Vertex->Position, sum);
    if (!Normalise(sum))
        return 0;
    for (int axis = 0; axis < 3; ++axis)
        polygon->Normal[axis] = static_cast<float>(sum[axis]);
    return 1;
}

void GenerateNormalsOf(std::span<Polygon* const> polygons) {
    std::vector<const Vertex*> smooth;
    for (Polygon* polygon : polygons) {
        GeneratePolygonNormal(polygon);
        if (polygon->Lighting == LightingSmooth)
            for (const PolygonBead* bead : EveryBead(polygon))
                smooth.push_back(bead->Vertex);
    }
    std::sort(smooth.begin(), smooth.end(), std::less<>());
    smooth.erase(std::unique(smooth.begin(), smooth.end()), smooth.end());
    CornerSmoother smoother;
    for (const Vertex* vertex : smooth)
        smoother.Smooth(vertex);
}

void GenerateNormals() {
    Object* object = CurrentObject();
    const std::int32_t connectionsOK = object->ConnectionsOK;
    const int workSaved = WorkSaved;
    const std::vector<Polygon*> flat = GeneratePolygonNormals(object);
    if (const int deleted = KeepPolygonsWithoutArea ? 0 : DeletePolygons(flat)) {
        Trace("GenerateNormals: %d bad polygons deleted\n", deleted);
        MakeConnections();
        // The deletions have cleared the flag, but the connections are as good as before.
        object->ConnectionsOK = connectionsOK;
        object->VertexSelectionChanged = object->PolygonSelectionChanged = 1;
        // A model just read is not changed work because it held a polygon that nobody can see.
        WorkSaved = workSaved;
    }
    double min[3], max[3];
    std::copy_n(object->Min, 3, min);
    std::copy_n(object->Max, 3, max);
    BoundAndSmooth(object);
    SetRadius(object);
    if (!std::equal(min, min + 3, object->Min) || !std::equal(max, max + 3, object->Max))
        SceneChangedSize = 1;
}
