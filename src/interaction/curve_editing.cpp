#include "interaction/curve_editing.h"

#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "interaction/picking.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/curve_flattening.h"
#include "views/labels.h"

#include <cmath>
#include <limits>
#include <utility>

namespace {

/// How much longer the way round by the pointer is than an edge that counts as clicked.
constexpr double EdgeSlack = 1.005;
constexpr double CrossSize = 8, CircleSize = 12; // pixels
constexpr int MarkerWidth = 2;

/// Where things are: on the screen or in the curve's own coordinates.
struct Place {
    double At[3];
    bool Known; // false: not in the view
};

class Clicker {
  public:
    Clicker(View* view, const double* point) : Shown(view) {
        if (view)
            Target = {{static_cast<double>(MouseX), static_cast<double>(MouseY), 0}, true};
        else
            Target = {{point[0], point[1], point[2]}, true};
    }

    Place PlaceOf(Ebead* bead) const {
        if (!Shown)
            return {{bead->Position[0], bead->Position[1], bead->Position[2]}, true};
        double appears[3];
        const bool known = Calc2dOf(Shown, bead->Position, appears);
        bead->OffScreen = known ? 0 : -1;
        if (known) {
            bead->Screen[0] = appears[0];
            bead->Screen[1] = appears[1];
        }
        return {{appears[0], appears[1], 0}, known};
    }

    double DistanceTo(Ebead* bead) const {
        const Place place = PlaceOf(bead);
        return place.Known ? Distance(place, Target) : std::numeric_limits<double>::max();
    }

    /// True when the target lies on the edge between two places; `t` is how far along.
    bool LiesBetween(const Place& a, const Place& b, double& t) const {
        if (!a.Known || !b.Known)
            return false;
        const double edge = Distance(a, b), round = Distance(a, Target) + Distance(Target, b);
        if (edge == 0 || round == 0 || round / edge >= EdgeSlack)
            return false;
        const double x = Target.At[0] - a.At[0], y = Target.At[1] - a.At[1];
        const int axis = std::fabs(x) >= std::fabs(y) ? 0 : 1;
        const double extent = b.At[axis] - a.At[axis];
        t = extent == 0 ? 0 : (Target.At[axis] - a.At[axis]) / extent;
        return true;
    }

    static double Distance(const Place& a, const Place& b) {
        return std::hypot(a.At[0] - b.At[0], a.At[1] - b.At[1], a.At[2] - b.At[2]);
    }

    View* const Shown;
    Place Target;
};

/// Draws one marker, with the matrices of DrawDeRotated.
void DrawCross(double pixel) {
    const double size = CrossSize * pixel;
    for (const double side : {1.0, -1.0}) {
        const double from[2] = {-size, -side * size}, to[2] = {size, side * size};
        gl::bgnline();
        gl::v2d(from);
        gl::v2d(to);
        gl::endline();
    }
}

void DrawCircle(double pixel) {
    gl::circ(0, 0, static_cast<float>(std::fabs(CircleSize * pixel)));
}

template <class Points>
void DrawLineThrough(const Points& points, bool closed) {
    closed ? gl::bgnclosedline() : gl::bgnline();
    for (const FlatPoint& point : points)
        gl::v3d(point.data());
    closed ? gl::endclosedline() : gl::endline();
}

} // namespace

Ebead* ElistBeadClick(View* view, Elist& list, const double* point, double tolerance) {
    const Clicker clicker(view, point);
    Ebead* nearest = nullptr;
    double least = std::numeric_limits<double>::max();
    for (Ebead* bead = list.First; bead; bead = bead->Next) {
        double distance = clicker.DistanceTo(bead);
        if (bead == list.Current && distance < tolerance)
            distance = -tolerance;
        if (distance < least) {
            nearest = bead;
            least = distance;
        }
    }
    if (!nearest || least >= tolerance)
        return nullptr;
    list.Current = nearest;
    return nearest;
}

Ebead* ElistEdgeClick(View* view, Elist& list, const double* point) {
    const Clicker clicker(view, point);
    for (Ebead* bead = list.First; bead; bead = bead->Next) {
        Ebead* next = bead->Next ? bead->Next : list.Closed ? list.First : nullptr;
        double t;
        if (!next || !clicker.LiesBetween(clicker.PlaceOf(bead), clicker.PlaceOf(next), t))
            continue;
        double place[3];
        for (int axis = 0; axis < 3; ++axis)
            place[axis] = view ? bead->Position[axis] + (next->Position[axis] - bead->Position[axis]) * t : point[axis];
        return InsertEbeadAfter(list, bead, place);
    }
    return nullptr;
}

void ElistClick(View* view, Elist& list, const double* point, double tolerance) {
    if (ElistBeadClick(view, list, point, tolerance))
        return;
    const Ebead* former = list.Current;
    Ebead* made = ElistEdgeClick(view, list, point);
    if (!made) {
        const Clicker clicker(view, point);
        Ebead* last = LastElistBead(list);
        const bool before = !last || clicker.DistanceTo(list.First) < clicker.DistanceTo(last);
        made = before ? PrependEbead(list, point) : AppendEbead(list, point);
    }
    if (former)
        made->CurvePoint = former->CurvePoint;
}

int ElistKey(Elist& list, int key, bool& changed) {
    const auto smoothness = [&](int level) { return std::exchange(list.Smoothness, level) != level; };
    changed = true;
    switch (key) {
    case CurveDeleteKey:
    case CurveCutKey:
        changed = list.Current != nullptr;
        ElistDelete(list);
        return 1;
    case 'c':
        list.Closed = !list.Closed;
        return 1;
    case 'b':
        list.Basis = list.Basis == BSpline ? MSpline : BSpline;
        return 1;
    case 'l':
        changed = smoothness(LowSmoothness);
        return 1;
    case 'n':
        changed = smoothness(NormalSmoothness);
        return 1;
    case 'h':
        changed = smoothness(HighSmoothness);
        return 1;
    case CurvePointKey:
        changed = list.Current != nullptr;
        if (list.Current)
            list.Current->CurvePoint = !list.Current->CurvePoint;
        return 1;
    default:
        changed = false;
        return 0;
    }
}

void DrawElist(View* view, const Elist& list) {
    gl::cpack(White);
    if (ElistLength(list) >= 2) {
        std::vector<FlatPoint> polygon;
        ScanElist(list, [&](const double* p, bool) { polygon.push_back({p[0], p[1], p[2]}); });
        DrawLineThrough(polygon, list.Closed != 0);
        DrawLineThrough(FlattenElist(list), list.Closed != 0);
    }
    gl::linewidth(MarkerWidth);
    ScanElist(list, [&](const double* position, bool isCurrent) {
        gl::cpack(White);
        DrawDeRotated(view, position, DrawCross);
        if (isCurrent) {
            gl::cpack(Red);
            DrawDeRotated(view, position, DrawCircle);
        }
    });
    gl::linewidth(1);
}
