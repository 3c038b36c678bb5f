#include "texturing/mappings.h"

#include "geometry/axes.h"
#include "geometry/boxes.h"
#include "geometry/vectors.h"
#include "interaction/quad_strips.h"
#include "store/accessors.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>

namespace {

/// Beyond this many repeats nothing of a texture can be told apart.
constexpr double FarthestCoordinate = 1e6;
constexpr double HalfPi = 90 * DegreesToRadians;
constexpr double FullTurn = 360 * DegreesToRadians;

double WithinBounds(double coordinate) {
    return std::isnan(coordinate) ? 0 : std::clamp(coordinate, -FarthestCoordinate, FarthestCoordinate);
}

/// The coordinates of a place on the cube that is textured by six projections, seen from the side that the normal
/// points to.
struct CubeSide {
    int Across, Up;
    double Sign;
};

CubeSide SideOf(const double* normal) {
    const double x = std::fabs(normal[0]), y = std::fabs(normal[1]), z = std::fabs(normal[2]);
    if (x > std::max(y, z))
        return {1, 2, normal[0] > 0 ? 1.0 : -1.0};
    if (y > std::max(x, z))
        return {0, 2, normal[1] > 0 ? -1.0 : 1.0};
    return {0, 1, normal[2] > 0 ? 1.0 : -1.0};
}

void SetRung(PolygonBead* first, PolygonBead* second, const StripMap& map, double along) {
    if (map.Sideways) {
        SetTexCoord(first, along, map.U0);
        SetTexCoord(second, along, map.U1);
    } else {
        SetTexCoord(first, map.U0, along);
        SetTexCoord(second, map.U1, along);
    }
}

double DistanceOf(const PolygonBead* a, const PolygonBead* b) {
    return DistanceBetweenCoords(a->Vertex->Position, b->Vertex->Position);
}

/// Twice as far as it is.
double DistanceOfMiddles(const PolygonBead* a, const PolygonBead* b, const PolygonBead* c, const PolygonBead* d) {
    double first[3], second[3];
    for (int axis = 0; axis < 3; ++axis) {
        first[axis] = a->Vertex->Position[axis] + b->Vertex->Position[axis];
        second[axis] = c->Vertex->Position[axis] + d->Vertex->Position[axis];
    }
    return DistanceBetweenCoords(first, second);
}

/// A walk along a strip.
struct StripWalk {
    const StripMap& Map;
    bool First = true;
    double Length = 0, Scale = 1;
};

double StripScale(const StripMap& map, double rung) {
    if (map.U0 == map.U1)
        return 0;
    double scale = rung / std::fabs(map.U1 - map.U0);
    map.Sideways ? scale *= CurrentAspect() : scale /= CurrentAspect();
    return scale == 0 ? 0 : 1 / (scale * map.Stretch);
}

void MapQuadOfStrip(PolygonBead* a0, PolygonBead* a1, PolygonBead* a2, PolygonBead* a3, void* argument) {
    StripWalk& walk = *static_cast<StripWalk*>(argument);
    GiveTexture(a0->Polygon);
    if (walk.First)
        walk.Scale = StripScale(walk.Map, DistanceOf(a0, a1));
    walk.First = false;
    SetRung(a0, a1, walk.Map, walk.Length * walk.Scale);
    walk.Length += DistanceOfMiddles(a0, a1, a3, a2) / 2;
    SetRung(a3, a2, walk.Map, walk.Length * walk.Scale);
}

} // namespace

void GiveTexture(Polygon* polygon) {
    polygon->Texture = CurrentTexture();
    polygon->TextureMaterial = CurrentMaterial();
    polygon->Flags &= static_cast<std::uint8_t>(~PolygonGeneratesTexture);
}

void SetTexCoord(PolygonBead* bead, double s, double t) {
    bead->TexCoord[0] = static_cast<float>(WithinBounds(s));
    bead->TexCoord[1] = static_cast<float>(WithinBounds(t));
}

double CurrentAspect() {
    const Texture* texture = CurrentTexture();
    return texture && texture->Aspect > 0 ? texture->Aspect : 1;
}

int ThreePointMap::Make(const double (&points)[3][3], const Matrix& toFrame) {
    double q[3][3];
    for (int i = 0; i < 3; ++i)
        TransformCoordinate(points[i], toFrame, q[i]);
    const double u[2] = {q[1][0] - q[0][0], q[1][1] - q[0][1]};
    const double v[2] = {q[2][0] - q[0][0], q[2][1] - q[0][1]};
    const double area = u[0] * v[1] - u[1] * v[0];
    if (area == 0)
        return 0;
    const double toS[2] = {v[1] / area, -v[0] / area}, toT[2] = {-u[1] / area, u[0] / area};
    for (const double number : {toS[0], toS[1], toT[0], toT[1]})
        if (!std::isfinite(number))
            return 0;
    std::copy_n(q[0], 2, Origin);
    std::copy_n(toS, 2, ToS);
    std::copy_n(toT, 2, ToT);
    return 1;
}

void MapThreePoints(Polygon* polygon, const ThreePointMap& map, const Matrix& toFrame) {
    GiveTexture(polygon);
    for (PolygonBead* bead : EveryBead(polygon)) {
        double p[3];
        TransformCoordinate(bead->Vertex->Position, toFrame, p);
        SetTexCoord(bead, map.S(p[0], p[1]), map.T(p[0], p[1]));
    }
}

void MapCylinder(Polygon* polygon, const CylinderMap& map) {
    GiveTexture(polygon);
    bool farLeft = false, farRight = false;
    const auto angleOf = [&](const PolygonBead* bead, double* p) {
        TransformCoordinate(bead->Vertex->Position, map.ToAxis, p);
        return std::atan2(p[1], p[0]);
    };
    for (PolygonBead* bead : EveryBead(polygon)) {
        double p[3];
        const double angle = angleOf(bead, p);
        if (p[0] == 0 && p[1] == 0) {
            SetTexCoord(bead, 0, 0);
            continue;
        }
        farLeft |= angle < -HalfPi;
        farRight |= angle > HalfPi;
        SetTexCoord(bead, angle / FullTurn * map.Repeat, p[2] / map.Square / map.Stretch);
    }
    if (!farLeft || !farRight)
        return;
    for (PolygonBead* bead : EveryBead(polygon)) {
        double p[3];
        if (const double angle = angleOf(bead, p); angle < -HalfPi && (p[0] != 0 || p[1] != 0))
            SetTexCoord(bead, angle / FullTurn * map.Repeat + map.Repeat, p[2] / map.Square / map.Stretch);
    }
}

void MapPlanar(Polygon* polygon, const Matrix& toFrame, double scale) {
    GiveTexture(polygon);
    const double scaleT = scale * CurrentAspect();
    for (PolygonBead* bead : EveryBead(polygon)) {
        double p[3];
        TransformCoordinate(bead->Vertex->Position, toFrame, p);
        SetTexCoord(bead, p[0] * scale, p[1] * scaleT);
    }
}

void MapCubic(Polygon* polygon, const Matrix& toFrame, double scale) {
    GiveTexture(polygon);
    const double scaleT = scale * CurrentAspect();
    double normal[3] = {polygon->Normal[0], polygon->Normal[1], polygon->Normal[2]};
    RotateVector(normal, toFrame, normal);
    const CubeSide side = SideOf(normal);
    for (PolygonBead* bead : EveryBead(polygon)) {
        double p[3];
        TransformCoordinate(bead->Vertex->Position, toFrame, p);
        SetTexCoord(bead, p[side.Across] * side.Sign * scale, p[side.Up] * scaleT);
    }
}

void PaintQuad(Polygon* polygon, int quarters) {
    polygon->Texture = CurrentTexture();
    polygon->TextureMaterial = CurrentMaterial();
    int corner = quarters;
    for (PolygonBead* bead : EveryBead(polygon))
        std::copy_n(TextureSquare[corner++ % 4], 2, bead->TexCoord);
}

void StretchOverPolygon(Polygon* polygon) {
    GiveTexture(polygon);
    const double normal[3] = {polygon->Normal[0], polygon->Normal[1], polygon->Normal[2]};
    Matrix toPlane;
    RotateToXAxis(normal, toPlane);
    double min[3], max[3], p[3];
    EmptyBox(min, max);
    for (const PolygonBead* bead : EveryBead(polygon)) {
        TransformCoordinate(bead->Vertex->Position, toPlane, p);
        GrowBox(min, max, p);
    }
    const auto share = [&](int axis) {
        const double extent = max[axis] - min[axis];
        return (p[axis] - min[axis]) / (extent == 0 ? 1 : extent);
    };
    for (PolygonBead* bead : EveryBead(polygon)) {
        TransformCoordinate(bead->Vertex->Position, toPlane, p);
        SetTexCoord(bead, share(1), share(2));
    }
}

void MapStrip(const StripMap& map) {
    StripWalk walk = {map};
    FeedBackQstrip(MapQuadOfStrip, &walk);
}
