#include "tools/sweep_frames.h"

#include "geometry/matrices.h"
#include "geometry/planes.h"
#include "geometry/vectors.h"
#include "tools/sweep.h"

#include <cmath>
#include <cstring>

namespace {

constexpr double CosineOf15 = 0.96592582628906831, CosineOf178 = -0.99939082701909576;
/// The path turns right back, so that there is no mitre.
constexpr double RightBack = 0.9999;

void Subtract(const double* a, const double* b, double* difference) {
    for (int axis = 0; axis < 3; ++axis)
        difference[axis] = a[axis] - b[axis];
}

void Copy(const double* from, double* to) {
    std::memcpy(to, from, 3 * sizeof(double));
}

void Direction(const FlatPoint& from, const FlatPoint& to, double* direction) {
    Subtract(to.data(), from.data(), direction);
    Normalise(direction);
}

/// One joint of the path: the directions before and after it.
struct Joint {
    double Before[3], After[3];
    double Back; // cosine of the angle between them, seen from the joint

    Joint(const Sweep& sweep, int k) {
        const auto& path = sweep.PathPoints;
        Direction(path[k - 1], path[k], Before);
        Direction(path[k], path[k + 1], After);
        Back = -Dot(After, Before);
    }

    bool TurnsBack() const { return Back > CosineOf15; }

    bool IsStraight() const { return Back <= CosineOf178; }

    /// Sets the direction half way between the two, and the frame.
    void Mitre(double* mitre, double* frame) const {
        double across[3], c[3], difference[3];
        Subtract(After, Before, difference);
        Copy(difference, across);
        Copy(After, mitre);
        DoubleCross(across, mitre, c);
        double turned[3];
        Cross(After, difference, turned);
        if (Normalise(turned))
            Copy(turned, frame);
    }
};

void PlaneThrough(const double* point, const double* normal, double* plane) {
    Copy(normal, plane);
    CalcPlaneD(plane, point);
}

/// The frame at the beginning of the path, direction d0: c to the left, r up. False when nothing says where up is.
bool FindUp(Sweep& sweep, const double* direction, double* d0, double* r, double* c) {
    const auto attempt = [&](const double* reference) {
        Copy(direction, d0);
        Copy(reference, r);
        return DoubleCross(d0, r, c) != 0;
    };
    if (sweep.Planar) {
        Copy(sweep.PathPlane, sweep.Normal);
        sweep.HasNormal = 1;
        double normal[3] = {sweep.Normal[0], sweep.Normal[1], sweep.Normal[2]};
        if (sweep.HasUp && Dot(normal, sweep.Up) < 0)
            for (double& coordinate : normal)
                coordinate = -coordinate;
        if (attempt(normal))
            return true;
    }
    return (sweep.HasNormal && attempt(sweep.Normal)) || (sweep.HasUp && attempt(sweep.Up));
}

/// A direction across the path when nothing says where up is.
void AnyAcross(const double* d, double* r) {
    r[0] = r[1] = r[2] = 0;
    if (d[0] == 0 && d[1] == 0)
        r[0] = 1;
    else if (std::fabs(d[1]) < std::fabs(d[0]))
        r[1] = d[0] < 0 ? 1 : -1;
    else
        r[0] = d[1] > 0 ? 1 : -1;
}

} // namespace

void PlaceProfile(Sweep& sweep, double* frame) {
    double direction[3], d0[3], r[3], c[3];
    Subtract(sweep.PathPoints[1].data(), sweep.PathPoints[0].data(), direction);
    double x[3], y[3];
    if (FindUp(sweep, direction, d0, r, c)) {
        for (int axis = 0; axis < 3; ++axis) {
            x[axis] = -c[axis];
            y[axis] = r[axis];
        }
    } else {
        Copy(direction, d0);
        AnyAcross(direction, r);
        DoubleCross(d0, r, c);
        Copy(r, x);
        Copy(c, y);
    }
    const double* origin = sweep.PathPoints[0].data();
    for (int row = 0; row < sweep.ProfileCount; ++row) {
        const FlatPoint& point = sweep.ProfilePoints[row];
        for (int axis = 0; axis < 3; ++axis)
            CellOf(sweep, row, 0).Start[axis] = origin[axis] + point[0] * x[axis] + point[1] * y[axis];
    }
    for (int axis = 0; axis < 3; ++axis)
        frame[axis] = -d0[axis];
}

void SweepProfile(Sweep& sweep, double* frame) {
    for (int k = 1; k < sweep.PathCount - 1; ++k) {
        const Joint joint(sweep, k);
        const double* at = sweep.PathPoints[k].data();
        double normal[3], cut[4], mirror[4];
        if (joint.TurnsBack())
            Copy(joint.Before, normal);
        else if (joint.IsStraight())
            Copy(joint.After, normal);
        else
            joint.Mitre(normal, frame);
        PlaneThrough(at, normal, cut);
        if (joint.TurnsBack()) {
            double across[3];
            Cross(frame, joint.Before, across);
            if (joint.Back <= RightBack || !Normalise(across))
                joint.Mitre(across, frame);
            PlaneThrough(at, across, mirror);
        }
        sweep.ReflectedEnd = joint.TurnsBack();
        for (int row = 0; row < sweep.ProfileCount; ++row) {
            SweepCell &before = CellOf(sweep, row, k - 1), &cell = CellOf(sweep, row, k);
            double line[6];
            Copy(before.Start, line);
            Copy(joint.Before, line + 3);
            Copy(before.Start, before.End); // stays there when the plane lies along the path
            IntersectLineWithPlane(line, cut, before.End);
            Copy(before.End, cell.Start);
            if (joint.TurnsBack()) {
                ReflectCoordinateInPlane(before.End, mirror, cell.Start);
                cell.Crease |= PathCrease;
            }
        }
    }
    if (PathIsClosed(sweep) && sweep.Planar && !sweep.ReflectedEnd)
        for (int row = 0; row < sweep.ProfileCount; ++row)
            Copy(CellOf(sweep, row, 1).Start, CellOf(sweep, row, ColumnsOf(sweep)).End);
}

void RevolveProfile(Sweep& sweep) {
    for (int row = 0; row < sweep.ProfileCount; ++row) {
        const FlatPoint& profile = sweep.ProfilePoints[row];
        for (int k = 0; k < sweep.PathCount; ++k) {
            const FlatPoint& path = sweep.PathPoints[k];
            SweepCell& cell = CellOf(sweep, row, k);
            cell.Start[0] = path[0] * profile[0];
            cell.Start[1] = path[1] * profile[0];
            cell.Start[2] = profile[1];
            if (k > 0)
                Copy(cell.Start, CellOf(sweep, row, k - 1).End);
        }
    }
}
