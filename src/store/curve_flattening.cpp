#include "store/curve_flattening.h"

#include "geometry/matrices.h"
#include "geometry/vectors.h"

#include <cmath>

namespace {

/// How far an edge may turn from the curve's tangent, degrees, by smoothness.
constexpr double SmoothnessAngles[] = {20, 10, 5};
/// Halvings of one segment: floats have no more to give.
constexpr int DeepestSubdivision = 24;

/// What a rounded corner has between its edges: where its curve begins, as a part of the edge, and where its control
/// point lies. An edge between two rounded corners is shared by their curves.
struct Rounding {
    double Start, Control;
};

constexpr Rounding ToCorner = {0, 0.552}, ToCurvePoint = {0.5, 0.776};

struct BezierPoint {
    float P[3];
};

/// One segment: four points.
struct Bezier {
    BezierPoint B[4];
};

BezierPoint ToFloats(const FlatPoint& point) {
    return {{static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])}};
}

BezierPoint Middle(const BezierPoint& a, const BezierPoint& b) {
    BezierPoint middle;
    for (int axis = 0; axis < 3; ++axis)
        middle.P[axis] = (a.P[axis] + b.P[axis]) / 2;
    return middle;
}

FlatPoint Mix(const FlatPoint& a, const FlatPoint& b, double t) {
    FlatPoint mixed;
    for (int axis = 0; axis < 3; ++axis)
        mixed[axis] = a[axis] + (b[axis] - a[axis]) * t;
    return mixed;
}

/// The direction from a to b, unit; false when they are the same.
bool Direction(const BezierPoint& a, const BezierPoint& b, float* direction) {
    for (int axis = 0; axis < 3; ++axis)
        direction[axis] = b.P[axis] - a.P[axis];
    return Normalisef(direction) != 0;
}

class Flattener {
  public:
    explicit Flattener(const Elist& list)
        : Closed(list.Closed != 0),
          LeastCosine(static_cast<float>(std::cos(SmoothnessAngles[list.Smoothness] * DegreesToRadians))) {
        for (const Ebead* bead = list.First; bead; bead = bead->Next)
            Beads.push_back({{bead->Position[0], bead->Position[1], bead->Position[2]}, bead->CurvePoint != 0});
        Count = static_cast<int>(Beads.size());
    }

    std::vector<FlatPoint> FlattenBspline() {
        for (int i = 0; i < Count; ++i) {
            if (!Closed && i == Count - 1) {
                Points.push_back(Beads[i].Place);
                continue;
            }
            const FlatPoint &p1 = At(i), &p2 = At(i + 1);
            const FlatPoint q0 = IsCurve(i) && HasNeighbour(i - 1) ? At(i - 1) : Mix(p2, p1, 2);
            const FlatPoint q3 = IsCurve(i + 1) && HasNeighbour(i + 2) ? At(i + 2) : Mix(p1, p2, 2);
            FlatPoint b0, b3;
            for (int axis = 0; axis < 3; ++axis) {
                b0[axis] = (q0[axis] + 4 * p1[axis] + p2[axis]) / 6;
                b3[axis] = (p1[axis] + 4 * p2[axis] + q3[axis]) / 6;
            }
            SubdivideBezier(
                {{ToFloats(b0), ToFloats(Mix(p1, p2, 1.0 / 3)), ToFloats(Mix(p1, p2, 2.0 / 3)), ToFloats(b3)}}, 0);
        }
        return std::move(Points);
    }

    std::vector<FlatPoint> FlattenMspline() {
        for (int i = 0; i < Count; ++i)
            if (IsRounded(i))
                RoundCorner(i);
            else if (!HasNeighbour(i + 1) || !IsRounded(i + 1)) // else that one's curve starts here
                Points.push_back(At(i));
        return std::move(Points);
    }

  private:
    struct Bead {
        FlatPoint Place;
        bool CurvePoint;
    };

    int Wrapped(int i) const { return (i + Count) % Count; }

    bool HasNeighbour(int i) const { return Closed || (i >= 0 && i < Count); }

    const FlatPoint& At(int i) const { return Beads[Wrapped(i)].Place; }

    bool IsCurve(int i) const { return Beads[Wrapped(i)].CurvePoint; }

    /// A curve point with two neighbours.
    bool IsRounded(int i) const { return IsCurve(i) && (Closed || (Wrapped(i) > 0 && Wrapped(i) < Count - 1)); }

    void RoundCorner(int i) {
        const FlatPoint &a = At(i - 1), &b = At(i), &c = At(i + 1);
        if (a == b || b == c)
            return;
        const Rounding &before = IsRounded(i - 1) ? ToCurvePoint : ToCorner,
                       &after = IsRounded(i + 1) ? ToCurvePoint : ToCorner;
        SubdivideBezier({{ToFloats(Mix(a, b, before.Start)), ToFloats(Mix(a, b, before.Control)),
                          ToFloats(Mix(c, b, after.Control)), ToFloats(Mix(c, b, after.Start))}},
                        0);
    }

    void SubdivideBezier(const Bezier& curve, int depth) {
        const BezierPoint* b = curve.B;
        float chord[3], start[3], end[3];
        if (!Direction(b[0], b[3], chord) || !Direction(b[0], b[1], start) || !Direction(b[2], b[3], end))
            return;
        const bool turns = DotProduct(chord, start) <= LeastCosine || DotProduct(chord, end) <= LeastCosine;
        if (!turns || depth == DeepestSubdivision) {
            Points.push_back({b[0].P[0], b[0].P[1], b[0].P[2]});
            return;
        }
        const BezierPoint left = Middle(b[0], b[1]), top = Middle(b[1], b[2]), right = Middle(b[2], b[3]);
        const BezierPoint upperLeft = Middle(left, top), upperRight = Middle(top, right);
        const BezierPoint middle = Middle(upperLeft, upperRight);
        SubdivideBezier({{b[0], left, upperLeft, middle}}, depth + 1);
        SubdivideBezier({{middle, upperRight, right, b[3]}}, depth + 1);
    }

    const bool Closed;
    const float LeastCosine;
    std::vector<Bead> Beads;
    int Count;
    std::vector<FlatPoint> Points;
};

} // namespace

std::vector<FlatPoint> FlattenElist(const Elist& list) {
    if (ElistLength(list) < 2)
        return {};
    Flattener flattener(list);
    return list.Basis == BSpline ? flattener.FlattenBspline() : flattener.FlattenMspline();
}
