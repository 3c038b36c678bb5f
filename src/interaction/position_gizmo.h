#pragma once

#include "geometry/matrices.h"

struct View;
struct Window;

// The position gizmo: a window and drags in the model views that move, turn and scale what their owner is placing,
// through one matrix. It knows nothing of what it moves. It is a tool by itself: it takes the views' buttons and keys,
// shows a tool bar, disables the side windows, and gives all of it back when it closes.

/// What changes while apply() is called: a drag of one of the three kinds, or nothing any more.
enum PositionMode { PositionTranslating = 0, PositionRotating = 1, PositionScaling = 2, PositionSettled = 3 };

// Title messages of the tool bar.
inline constexpr int PastePolygonsTitle = 107;
inline constexpr int PositionObjectsTitle = 108;
inline constexpr int PositionTextureTitle = 109;
inline constexpr int PositionVerticesTitle = 110;
inline constexpr int PositionPolygonsTitle = 111;

/// The owner's callbacks. Points and planes are model space (in scene mode: scene space).
/// Places the geometry by the matrix, relative to where it was when the gizmo opened; `mode` is a PositionMode.
using PositionApply = void (*)(const Matrix& matrix, int mode);
/// Called once when the gizmo closes: the geometry stays where it was placed last, or is to be put back.
using PositionEnd = void (*)();
/// The centre of the geometry as it lies now, 3 doubles.
using PositionCentre = void (*)(double* point);
/// The signed distance of the geometry from the plane, of its point nearest to it: moving against the plane's normal by
/// this much lets it touch the plane. 0 when the geometry lies on both sides or on the plane.
using PositionTouch = int (*)(const double* plane, double& distance);

/// Opens the gizmo for an owner; `touch` may be null, `title` is a message number. When it is open already it is only
/// raised, and the callbacks are not taken.
void OpenOffsetGizmo(PositionApply apply, PositionEnd cancel, PositionEnd done, PositionCentre centre,
                     PositionTouch touch, int title);

/// Composes the matrix anew, applies it settled, and has the model views drawn. Nothing while the gizmo is closed.
void ForceOffsetUpdate();
/// Applies the matrix with a mode; the same, and the model views are drawn at once.
void DoOffsetMaths(int mode);
void DoOffsetUpdate(int mode);

/// Bracket a drag: it is shown in the current window or, with 0, in the large viewport. After it the matrix is applied
/// settled.
void StartOffsetMove(int inCurrentWindow);
void StopOffsetMove();

/// Closes the gizmo as its buttons do: with Done, or with Cancel.
void CloseOffsetGizmo(int accept);
/// 1 from its opening until its owner has been told of the end.
int PositionGizmoIsOpen();

/// The window; null while closed.
extern Window* OffsetGizmo;
/// Its last bottom-left corner, screen pixels, and a flag: there is one. Kept with the defaults.
extern int OffsetX, OffsetY, OffsetGizmoOpened;
