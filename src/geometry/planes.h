#pragma once

#include "geometry/matrices.h"

// Planes and lines. A plane is 4 doubles (a, b, c, d) with a x + b y + c z + d = 0; (a, b, c) is its normal, and
// distances are true lengths when that is a unit vector. A line is 6 doubles, origin then direction, with the points
// origin + t * direction. Points are 3 doubles.

/// Sets d so that the plane, whose normal is set, goes through the point.
void CalcPlaneD(double* plane, const double* point);

/// The plane of the x and y axes transformed by m: normal in row 2, through the origin in row 3.
void GetPlaneFromTransformation(const Matrix& m, double* plane);

/// Signed: positive on the side to which the normal points.
double DistanceFromPointToPlane(const double* point, const double* plane);

/// Output in place allowed in both.
void FindNearestPointOnPlane(const double* point, const double* plane, double* out);
void ReflectCoordinateInPlane(const double* point, const double* plane, double* out);

/// Sets t to the line's parameter at the plane and returns 1; a parallel line gives t = 0 and returns 0.
int DistanceToPlaneAlongLine(const double* line, const double* plane, double* t);

/// Sets the point where line and plane meet and returns 1 when it lies ahead of the line's origin, -1 when it lies at
/// or behind it. Returns 0 and leaves the point alone when they are parallel.
int IntersectLineWithPlane(const double* line, const double* plane, double* point);

/// In place allowed.
void TransformLine(const double* line, const Matrix& m, double* out);
