#include "interaction/position_state.h"

#include "geometry/axes.h"
#include "geometry/numbers.h"
#include "geometry/vectors.h"
#include "interaction/rotate_dial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

PositionState Position;

namespace {

PositionOwner Owner;
/// The centre of scaling: that of the geometry when the gizmo opened.
double ScaleCentre[3];

/// One more than there are steps: the present state is kept at their end, so that it can be redone.
std::array<PositionState, PositionSteps + 1> History;
/// The record that Undo restores next is the one before Index; Redo reaches up to Top.
int Index, Top;

Matrix RotationAboutAxis(double degrees) {
    switch (Position.AxisMode) {
    case 0:
        return PitchMatrix(degrees);
    case 1:
        return RollMatrix(degrees);
    case 2:
        return YawMatrix(degrees);
    default:
        break;
    }
    Matrix toX, rotation;
    RotateToXAxis(Position.Axis, toX);
    MultMatrix(toX, PitchMatrix(degrees), rotation);
    MultMatrix(rotation, MatrixInverse(toX), rotation);
    return rotation;
}

/// The direction from the centre to the point, at a right angle to the axis; 0 when the point lies on the axis.
int DirectionAcrossAxis(const double* point, double* direction) {
    double axis[3], across[3];
    for (int i = 0; i < 3; ++i) {
        axis[i] = Position.Axis[i];
        direction[i] = point[i] - Position.Centre[i];
    }
    return DoubleCross(axis, direction, across);
}

} // namespace

void ResetPosition(const PositionOwner& owner) {
    Owner = owner;
    Position = {};
    Index = Top = 0;
    Owner.Centre(Position.Centre);
    std::copy_n(Position.Centre, 3, ScaleCentre);
}

const PositionOwner& OwnerOfPosition() {
    return Owner;
}

Matrix ComposedPosition() {
    const double* s = Position.Scale;
    Matrix composed = Position.M;
    if (s[0] == 1 && s[1] == 1 && s[2] == 1)
        return composed;
    const double* c = ScaleCentre;
    MultMatrix(TranslationMatrix(c[0], c[1], c[2]), composed, composed);
    MultMatrix(ScaleMatrix(s[0], s[1], s[2]), composed, composed);
    MultMatrix(TranslationMatrix(-c[0], -c[1], -c[2]), composed, composed);
    return composed;
}

void PushOffset() {
    if (Index == PositionSteps) {
        std::move(History.begin() + 1, History.end(), History.begin());
        --Index;
    }
    History[Index] = Position;
    Top = ++Index;
}

int UndoPosition() {
    History[Index] = Position;
    if (Index == 0)
        return 0;
    Position = History[--Index];
    return 1;
}

int RedoPosition() {
    if (Index == Top)
        return 0;
    Position = History[++Index];
    return 1;
}

int PositionUndoSteps() {
    return Index;
}

int PositionRedoSteps() {
    return Top - Index;
}

void SetOffset(int axis, double value, int force) {
    if (Position.Lock[axis] && !force)
        return;
    Position.M[3][axis] += value - Position.Offset[axis];
    Position.Offset[axis] = value;
}

void SetRoundedOffset(int axis, double value, int force) {
    SetOffset(axis, RoundToNSF(value, 4), force);
}

void RotatePosition(double degrees) {
    const double* c = Position.Centre;
    Matrix& m = Position.M;
    MultMatrix(m, TranslationMatrix(-c[0], -c[1], -c[2]), m);
    MultMatrix(m, RotationAboutAxis(degrees), m);
    MultMatrix(m, TranslationMatrix(c[0], c[1], c[2]), m);
}

int AngleBetweenPoints(const double* from, const double* to, double& degrees) {
    double a[3], b[3], across[3];
    if (!DirectionAcrossAxis(to, a) || !DirectionAcrossAxis(from, b))
        return 0;
    degrees = std::acos(std::clamp(Dot(b, a), -1.0, 1.0)) * RadiansToDegrees;
    Cross(b, a, across);
    if (Dot(across, Position.Axis) < 0)
        degrees = -degrees;
    return 1;
}

int SetAxisThrough(const double* point) {
    double axis[3];
    for (int i = 0; i < 3; ++i)
        axis[i] = point[i] - Position.Centre[i];
    if (!Normalise(axis))
        return 0;
    std::copy_n(axis, 3, Position.Axis);
    return 1;
}

void SetScale(int axis, double scale) {
    if (Position.KeepOrthogonal)
        std::fill(std::begin(Position.Scale), std::end(Position.Scale), scale);
    else
        Position.Scale[axis] = scale;
    Position.LastScaled = axis;
}
