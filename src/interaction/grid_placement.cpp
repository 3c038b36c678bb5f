#include "interaction/grid_placement.h"

#include "geometry/planes.h"
#include "geometry/vectors.h"
#include "store/walks.h"
#include "store/work_polygons.h"
#include "views/grid.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int AlignedDirection = -1;
/// Sine of the least angle at which two lines are not one line with errors of rounding.
constexpr double LeastSine = 1e-7;

/// Corners in ring order.
using Ring = std::vector<const double*>;

void MoveAlongNormal(View* view, const double* from, double distance) {
    Matrix& grid = view->GridMatrix;
    for (int axis = 0; axis < 3; ++axis)
        grid[3][axis] = from[axis] + distance * grid[2][axis];
}

void PlaceGrid(View* view, const double* x, const double* y, const double* normal, const double* centre) {
    const double* const rows[] = {x, y, normal, centre};
    for (int row = 0; row < 4; ++row)
        std::copy_n(rows[row], 3, &view->GridMatrix[row][0]);
    view->Direction = AlignedDirection;
}

/// The first edge that has a length: its direction, and the corner at which it begins; null when there is none.
const double* FirstEdge(const Ring& ring, double* edge) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const double* const next = ring[(i + 1) % ring.size()];
        for (int axis = 0; axis < 3; ++axis)
            edge[axis] = next[axis] - ring[i][axis];
        if (Normalise(edge))
            return ring[i];
    }
    return nullptr;
}

int AlignGrid(View* view, const Ring& ring, const float* polygonNormal) {
    double edge[3], right[3], normal[3];
    const double* const corner = FirstEdge(ring, edge);
    std::copy_n(polygonNormal, 3, normal);
    if (!corner)
        return 0;
    Cross(edge, normal, right);
    if (!Normalise(right))
        return 0;
    // Normals of polygons are less exact than a frame must be.
    Cross(right, edge, normal);
    PlaceGrid(view, right, edge, normal, corner);
    return 1;
}

} // namespace

void CentreGrid(View* view, const double* point) {
    std::copy_n(point, 3, &view->GridMatrix[3][0]);
}

void MoveGridPlaneTo(View* view, const double* point) {
    double plane[4];
    GetPlaneFromTransformation(view->GridMatrix, plane);
    MoveAlongNormal(view, &view->GridMatrix[3][0], DistanceFromPointToPlane(point, plane));
}

int OffsetGrid(View* view, double distance) {
    const Matrix before = view->GridMatrix;
    const double origin[3] = {};
    MoveAlongNormal(view, view->Perspective ? &before[3][0] : origin, distance);
    const double* const centre = &view->GridMatrix[3][0];
    if (std::all_of(centre, centre + 3, [](double place) { return std::fabs(place) <= FarthestGrid; }))
        return 1;
    view->GridMatrix = before;
    return 0;
}

void ResetGridPlane(View* view, int plane) {
    constexpr char axes[] = {'y', 'z', 'x'};
    if (view->Perspective)
        SetGridAxis(view, axes[plane]);
    else
        std::fill_n(&view->GridMatrix[3][0], 3, 0.0);
}

int AlignGridToPoints(View* view, const double (*points)[3]) {
    double second[3], first[3], normal[3];
    for (int axis = 0; axis < 3; ++axis) {
        second[axis] = points[1][axis] - points[0][axis];
        first[axis] = points[0][axis] - points[2][axis];
    }
    Cross(first, second, normal);
    if (LengthOfVector(normal) <= LeastSine * LengthOfVector(first) * LengthOfVector(second) ||
        !DoubleCross(second, first, normal))
        return 0;
    PlaceGrid(view, first, second, normal, points[0]);
    return 1;
}

int AlignGridToPolygon(View* view, const Polygon* polygon) {
    Ring ring;
    for (const PolygonBead* bead : EveryBead(polygon))
        ring.push_back(bead->Vertex->Position);
    return AlignGrid(view, ring, polygon->Normal);
}

int AlignGridToPolygon(View* view, WorkPoly* polygon) {
    if (!CalcWorkPolyNormal(polygon))
        return 0;
    Ring ring;
    const WorkPolyBead* bead = polygon->FirstBead;
    do {
        ring.push_back(bead->Position);
        bead = bead->Next;
    } while (bead && bead != polygon->FirstBead);
    return AlignGrid(view, ring, polygon->Normal);
}

void TurnGrid(View* view, int rotation, double degrees) {
    MultMatrix(rotation == GridTwist ? YawMatrix(degrees) : RollMatrix(degrees), view->GridMatrix, view->GridMatrix);
}
