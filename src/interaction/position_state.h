#pragma once

#include "geometry/matrices.h"
#include "interaction/position_gizmo.h"

// What the position gizmo has been told: one record, which is also the unit of its history, and what can be done to it
// without a window. Axes are 0 to 2. Angles are degrees.

enum PositionPage { TranslatePage, RotatePage, ScalePage };

enum TranslateMode { DragWithMouse, DifferenceBetweenVertices, MoveToTouchGrid };

enum CentreMode { CentreOfSelection, CentreAtOrigin, CentreAtVertex };

/// The first three are axes by number.
enum AxisMode { ThroughVertex = 3 };

struct PositionState {
    int Page = RotatePage;
    /// All translations and rotations so far; scales are kept apart and act first.
    Matrix M = IdentityMatrix;
    int TranslateMode = DragWithMouse;
    /// Translation entered per axis, metres, and flags: the axis takes none from the pointer or from picked points.
    double Offset[3] = {};
    int Lock[3] = {};
    int CentreMode = CentreOfSelection;
    int AxisMode = 0;
    /// As displayed: clockwise looking along the axis.
    double Angle = 0;
    /// A point and a unit vector, model space.
    double Centre[3] = {};
    double Axis[3] = {1, 0, 0};
    double Scale[3] = {1, 1, 1};
    int KeepOrthogonal = 0;
    /// The axis whose scale was changed last.
    int LastScaled = 0;
};

extern PositionState Position;

/// The owner's callbacks, while the gizmo is open.
struct PositionOwner {
    PositionApply Apply;
    PositionEnd Cancel, Done;
    PositionCentre Centre;
    PositionTouch Touch;
    int Title;
};

/// Starts anew for an owner, with an empty history.
void ResetPosition(const PositionOwner& owner);
/// The owner of this run.
const PositionOwner& OwnerOfPosition();

/// What is applied: the scales about the centre that the geometry had when the gizmo opened, then M.
Matrix ComposedPosition();

// History: how many changes can be taken back at most.
inline constexpr int PositionSteps = 63;
/// Saves the state before a change; what could be redone is forgotten, and beyond PositionSteps the oldest step.
void PushOffset();
/// Takes one step back or forward; 0 when there is none.
int UndoPosition();
int RedoPosition();
/// How many steps Undo and Redo can take.
int PositionUndoSteps();
int PositionRedoSteps();

/// Translates so that the axis has this offset; nothing when it is locked, unless forced.
void SetOffset(int axis, double value, int force);
/// The same with the value rounded to four significant figures.
void SetRoundedOffset(int axis, double value, int force);
/// Turns about the axis through the centre, by a positive angle counter-clockwise seen from the axis' positive end.
void RotatePosition(double degrees);
/// The angle about the axis from one point to the other as seen from the centre; 0 when one of them lies on the axis.
int AngleBetweenPoints(const double* from, const double* to, double& degrees);
/// Sets the axis towards the point; 0 when that is the centre.
int SetAxisThrough(const double* point);
/// The scale of an axis, or with KeepOrthogonal of all of them.
void SetScale(int axis, double scale);
