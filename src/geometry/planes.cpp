#include "geometry/planes.h"

#include "geometry/vectors.h"

namespace {

// out = point + distance * direction.
void MoveAlong(const double* point, const double* direction, double distance, double* out) {
    for (int axis = 0; axis < 3; ++axis)
        out[axis] = point[axis] + direction[axis] * distance;
}

} // namespace

void CalcPlaneD(double* plane, const double* point) {
    plane[3] = -Dot(plane, point);
}

void GetPlaneFromTransformation(const Matrix& m, double* plane) {
    for (int axis = 0; axis < 3; ++axis)
        plane[axis] = m[2][axis];
    CalcPlaneD(plane, m[3]);
}

double DistanceFromPointToPlane(const double* point, const double* plane) {
    return Dot(plane, point) + plane[3];
}

void FindNearestPointOnPlane(const double* point, const double* plane, double* out) {
    MoveAlong(point, plane, -DistanceFromPointToPlane(point, plane), out);
}

void ReflectCoordinateInPlane(const double* point, const double* plane, double* out) {
    MoveAlong(point, plane, -2 * DistanceFromPointToPlane(point, plane), out);
}

int DistanceToPlaneAlongLine(const double* line, const double* plane, double* t) {
    const double slope = Dot(plane, line + 3);
    *t = slope == 0 ? 0 : -DistanceFromPointToPlane(line, plane) / slope;
    return slope != 0;
}

int IntersectLineWithPlane(const double* line, const double* plane, double* point) {
    double t;
    if (!DistanceToPlaneAlongLine(line, plane, &t))
        return 0;
    MoveAlong(line, line + 3, t, point);
    return t > 0 ? 1 : -1;
}

void TransformLine(const double* line, const Matrix& m, double* out) {
    TransformCoordinate(line, m, out);
    RotateVector(line + 3, m, out + 3);
}
