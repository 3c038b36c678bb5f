#include "tools/sweep.h"

#include "geometry/boxes.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "tools/sweep_frames.h"
#include "tools/sweep_surface.h"
#include "views/grid.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>

namespace {

/// A path counts as plane when no point lies farther from the plane than this part of the path's extent.
constexpr double Flatness = 0.001;
/// An outline whose area is a smaller part of the square of its extent has no plane: what is left is rounding.
constexpr double LeastArea = 1e-9;
/// Of the edges at the ends, by which an open curve is made longer.
constexpr double EndPart = 1.0 / 16;

void CheckPathPlanar(Sweep& sweep) {
    double normal[3] = {}, min[3], max[3];
    EmptyBox(min, max);
    const Elist& path = sweep.Path;
    for (const Ebead* bead = path.First; bead; bead = bead->Next) {
        AddNewellEdge(bead->Position, (bead->Next ? bead->Next : path.First)->Position, normal);
        GrowBox(min, max, bead->Position);
    }
    const double extent = DistanceBetweenCoords(min, max);
    if (!(LengthOfVector(normal) > LeastArea * extent * extent))
        normal[0] = normal[1] = normal[2] = 0;
    Normalise(normal);
    double* plane = sweep.PathPlane;
    std::memcpy(plane, normal, sizeof normal);
    plane[3] = -Dot(normal, path.First->Position);
    double farthest = 0;
    for (const Ebead* bead = path.First; bead; bead = bead->Next)
        farthest = std::max(farthest, std::fabs(Dot(plane, bead->Position) + plane[3]));
    sweep.Planar = farthest <= Flatness * extent;
}

/// The points as the mesh wants them: without repeats, with one before the first and some after the last.
std::vector<FlatPoint> WithEnds(std::vector<FlatPoint> points, bool closed, double scale) {
    std::vector<FlatPoint> distinct;
    for (FlatPoint& point : points) {
        for (double& coordinate : point)
            coordinate *= scale;
        if (distinct.empty() || distinct.back() != point)
            distinct.push_back(point);
    }
    while (closed && distinct.size() > 1 && distinct.front() == distinct.back())
        distinct.pop_back();
    if (distinct.size() < 2)
        return {};
    const auto beyond = [](const FlatPoint& end, const FlatPoint& inner) {
        FlatPoint point;
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = end[axis] + (end[axis] - inner[axis]) * EndPart;
        return point;
    };
    if (closed) {
        distinct.insert(distinct.begin(), distinct.back());
        for (const std::size_t i : {1, 2, 3})
            distinct.push_back(FlatPoint(distinct[i]));
    } else {
        const std::size_t last = distinct.size() - 1;
        const FlatPoint before = beyond(distinct[0], distinct[1]), after = beyond(distinct[last], distinct[last - 1]);
        const FlatPoint farther = beyond(after, distinct[last]);
        distinct.insert(distinct.begin(), before);
        distinct.push_back(after);
        distinct.push_back(farther);
    }
    distinct.pop_back();
    return distinct;
}

std::vector<FlatPoint> Circle(int sides) {
    std::vector<FlatPoint> points;
    for (int side = 0; side < sides; ++side) {
        const double angle = side * 2 * std::numbers::pi / sides;
        points.push_back({std::cos(angle), std::sin(angle), 0});
    }
    return points;
}

/// With a point wherever the profile crosses the axis: a quadrilateral across it would cross itself.
std::vector<FlatPoint> CutAtAxis(const std::vector<FlatPoint>& points, bool closed) {
    std::vector<FlatPoint> cut;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const FlatPoint& from = points[i];
        cut.push_back(from);
        if (i + 1 == points.size() && !closed)
            break;
        const FlatPoint& to = points[(i + 1) % points.size()];
        if (from[0] * to[0] < 0)
            cut.push_back({0, from[1] + (to[1] - from[1]) * from[0] / (from[0] - to[0]), 0});
    }
    return cut;
}

void FlattenSweep(Sweep& sweep) {
    const bool closed = sweep.Profile.Closed != 0;
    std::vector<FlatPoint> profile = FlattenElist(sweep.Profile);
    if (sweep.Revolve)
        profile = CutAtAxis(profile, closed);
    sweep.ProfilePoints = WithEnds(std::move(profile), closed, GridSquare(sweep.GridIndex));
    sweep.PathPoints = sweep.Revolve ? WithEnds(Circle(sweep.Sides), true, 1)
                                     : WithEnds(FlattenElist(sweep.Path), sweep.Path.Closed != 0, 1);
    sweep.ProfileCount = static_cast<int>(sweep.ProfilePoints.size());
    sweep.PathCount = static_cast<int>(sweep.PathPoints.size());
}

} // namespace

Sweep::Sweep() : Caps(nullptr), DrawingForm(0) {
    InitialiseSweep(*this);
}

Sweep::~Sweep() {
    // Not the caps: the pools that own them may have gone before.
}

void InitialiseSweep(Sweep& sweep) {
    FreeSweepMesh(sweep);
    for (Elist* list : {&sweep.Path, &sweep.Profile}) {
        ResetElist(*list);
        list->Closed = 0;
        list->Smoothness = NormalSmoothness;
    }
    sweep.Path.Basis = BSpline;
    sweep.Profile.Basis = MSpline;
    sweep.HasUp = sweep.HasNormal = 0;
    sweep.Remake = 1;
    sweep.ApplyTexture = sweep.Sideways = sweep.InsideOut = sweep.DoubleSided = 0;
    sweep.CapEnds = 1;
    sweep.Revolve = 0;
    sweep.Sides = 4;
    sweep.Stretch = sweep.Repeat = 1;
    sweep.GridIndex = 9;
}

void FreeSweepMesh(Sweep& sweep) {
    std::vector<SweepCell>().swap(sweep.Mesh);
    std::vector<FlatPoint>().swap(sweep.PathPoints);
    std::vector<FlatPoint>().swap(sweep.ProfilePoints);
    if (sweep.Caps)
        FreeWorkPoly(sweep.Caps);
    sweep.Caps = nullptr;
    sweep.PathCount = sweep.ProfileCount = sweep.PolygonCount = 0;
    sweep.Planar = sweep.ReflectedEnd = 0;
    sweep.Remake = 1;
    sweep.Drawing.Release();
}

void RemakeSweepMesh(Sweep& sweep) {
    if (!sweep.Remake)
        return;
    constexpr int fewestOfLoop = 3, fewestPoints = 4;
    FreeSweepMesh(sweep);
    for (Elist* list : {&sweep.Path, &sweep.Profile})
        if (ElistLength(*list) < fewestOfLoop)
            list->Closed = 0;
    if (sweep.Revolve)
        sweep.Planar = 1;
    else if (ElistLength(sweep.Path) >= 2)
        CheckPathPlanar(sweep);
    if (!sweep.Planar)
        sweep.Path.Closed = 0;
    FlattenSweep(sweep);
    sweep.Remake = 0;
    if (sweep.PathCount < fewestPoints || sweep.ProfileCount < fewestPoints)
        return;
    sweep.PolygonCount = RowsOf(sweep) * ColumnsOf(sweep);
    sweep.Mesh.assign(static_cast<std::size_t>(sweep.ProfileCount) * sweep.PathCount, SweepCell{});
    if (sweep.Revolve) {
        RevolveProfile(sweep);
    } else {
        double frame[3];
        PlaceProfile(sweep, frame);
        SweepProfile(sweep, frame);
    }
    SweepNormals(sweep);
    if (SweepIsTextured(sweep))
        SweepTexture(sweep);
    if (sweep.CapEnds)
        SweepCaps(sweep);
    if (sweep.DoubleSided)
        sweep.PolygonCount *= 2;
}

bool SweepIsTextured(const Sweep& sweep) {
    return sweep.ApplyTexture && CurrentTexture();
}
