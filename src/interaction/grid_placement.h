#pragma once

struct Polygon;
struct View;
struct WorkPoly;

// Where the grid of a view lies: what can be done to its GridMatrix without a window. Points are model space, in scene
// mode scene space; angles degrees.

/// Farther from the origin no grid can be moved, metres.
inline constexpr double FarthestGrid = 1e12;

/// Centres the grid on the point; or moves it along its normal until its plane goes through the point.
void CentreGrid(View* view, const double* point);
void MoveGridPlaneTo(View* view, const double* point);
/// Moves the grid along its normal: that of a 2D view to this distance from the origin, on the line through it, that of
/// a 3D view by this distance. 0, and the grid stays, when that is too far.
int OffsetGrid(View* view, double distance);
/// Puts the grid of a 3D view into the x-y, x-z or y-z plane (0 to 2) again, that of a 2D view back to the origin.
void ResetGridPlane(View* view, int plane);

/// Lays the grid through three points, its centre on the first and its second axis towards the second. 0, and the grid
/// stays, when they lie in a line.
int AlignGridToPoints(View* view, const double (*points)[3]);
/// Lays it on a polygon, its centre at the first corner that differs from the next one, its second axis along that
/// edge. 0, and the grid stays, for a polygon without area. Of a polygon of the model the normals must be valid.
int AlignGridToPolygon(View* view, const Polygon* polygon);
int AlignGridToPolygon(View* view, WorkPoly* polygon);

/// The rotations of a grid in itself: about its normal, and about its second axis.
enum GridRotation { GridTwist = 0, GridTilt = 1 };

/// Turns the grid, counter-clockwise seen from the positive end of what it turns about.
void TurnGrid(View* view, int rotation, double degrees);
