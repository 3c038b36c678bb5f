#include "textures/texture_lock.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

int KeepTexturesInPlace;

namespace {

/// Coordinates that differ by less from the map of the others count as following it.
constexpr double MapTolerance = 1e-3;

/// Texture coordinates as a function of the place.
struct PlaneMap {
    double Origin[3], Start[2], Gradient[2][3];

    double At(int coordinate, const double* place) const {
        double value = Start[coordinate];
        for (int axis = 0; axis < 3; ++axis)
            value += Gradient[coordinate][axis] * (place[axis] - Origin[axis]);
        return value;
    }
};

struct MovingCorner {
    PolygonBead* Bead;
    float Former[2];
    /// In Maps.
    std::size_t Map;
};

std::vector<PlaneMap> Maps;
std::vector<MovingCorner> Corners;

void Difference(const PolygonBead* from, const PolygonBead* to, double* out) {
    for (int axis = 0; axis < 3; ++axis)
        out[axis] = to->Vertex->Position[axis] - from->Vertex->Position[axis];
}

/// The corner for which measure(corner) is greatest.
template <class Measure>
const PolygonBead* Greatest(const Polygon* polygon, Measure measure) {
    const PolygonBead* found = nullptr;
    double greatest = 0;
    for (const PolygonBead* bead : EveryBead(polygon))
        if (const double value = measure(bead); value > greatest) {
            greatest = value;
            found = bead;
        }
    return found;
}

/// False when the polygon has no area, or its coordinates follow no such map.
bool MakeMap(const Polygon* polygon, PlaneMap& map) {
    const PolygonBead* origin = polygon->Beads;
    double u[3], v[3], across[3];
    const PolygonBead* first = Greatest(polygon, [&](const PolygonBead* bead) {
        Difference(origin, bead, v);
        return Dot(v, v);
    });
    if (!first)
        return false;
    Difference(origin, first, u);
    const PolygonBead* second = Greatest(polygon, [&](const PolygonBead* bead) {
        Difference(origin, bead, v);
        Cross(u, v, across);
        return Dot(across, across);
    });
    if (!second)
        return false;
    Difference(origin, second, v);
    Cross(u, v, across);
    const double area = Dot(across, across);
    double toU[3], toV[3];
    Cross(v, across, toU);
    Cross(across, u, toV);
    std::copy_n(origin->Vertex->Position, 3, map.Origin);
    for (int coordinate = 0; coordinate < 2; ++coordinate) {
        map.Start[coordinate] = origin->TexCoord[coordinate];
        const double alongU = first->TexCoord[coordinate] - map.Start[coordinate];
        const double alongV = second->TexCoord[coordinate] - map.Start[coordinate];
        for (int axis = 0; axis < 3; ++axis)
            map.Gradient[coordinate][axis] = (alongU * toU[axis] + alongV * toV[axis]) / area;
        for (const PolygonBead* bead : EveryBead(polygon))
            if (!(std::fabs(map.At(coordinate, bead->Vertex->Position) - bead->TexCoord[coordinate]) < MapTolerance))
                return false;
    }
    return true;
}

void Lock(const Polygon* polygon) {
    PlaneMap map;
    const auto corners = EveryBead(polygon);
    const bool allMove =
        std::all_of(corners.begin(), corners.end(), [](const PolygonBead* bead) { return bead->Vertex->Mark; });
    if (!polygon->Texture || polygon->Flags & PolygonGeneratesTexture || allMove || !MakeMap(polygon, map))
        return;
    for (PolygonBead* bead : corners)
        if (bead->Vertex->Mark)
            Corners.push_back({bead, {bead->TexCoord[0], bead->TexCoord[1]}, Maps.size()});
    Maps.push_back(map);
}

} // namespace

void LockTextures(Vertex* moving) {
    UnlockTextures();
    if (!KeepTexturesInPlace)
        return;
    CleanUpObject();
    for (Vertex* vertex : EveryVertex(CurrentObject()))
        vertex->Mark = 0;
    for (Vertex* vertex : Along<&Vertex::NextInGroup>(moving))
        vertex->Mark = 1;
    ClearAllPolygonFlags();
    for (const Vertex* vertex : Along<&Vertex::NextInGroup>(moving))
        for (const PolygonBead* bead : EveryUse(vertex))
            if (!std::exchange(bead->Polygon->Mark, 1))
                Lock(bead->Polygon);
}

void FollowLockedTextures() {
    if (Corners.empty())
        return;
    for (const MovingCorner& corner : Corners)
        for (int coordinate = 0; coordinate < 2; ++coordinate)
            corner.Bead->TexCoord[coordinate] =
                static_cast<float>(Maps[corner.Map].At(coordinate, corner.Bead->Vertex->Position));
    AppearanceChanged(CurrentObject());
}

void SwapLockedTextures() {
    for (MovingCorner& corner : Corners)
        std::swap(corner.Former, corner.Bead->TexCoord);
    if (!Corners.empty())
        AppearanceChanged(CurrentObject());
}

void UnlockTextures() {
    Maps.clear();
    Corners.clear();
}
