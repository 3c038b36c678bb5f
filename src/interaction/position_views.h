#pragma once

#include "interaction/pending_pick.h"
#include "store/view_record.h"

#include <cstdint>

// The position gizmo in the model views: its drags, the vertices that it asks for, its keys and menu, and the axis that
// it turns about.

/// The status of the gizmo; ended by 0.
extern const std::int16_t PositionStatus[];

void PositionLeft(View* view);
void PositionMenu(View* view);
int PositionKey(View* view, int character);

/// What the views can be asked to pick: the two vertices of a translation, the centre of rotation, a vertex on the
/// axis, the two vertices of an angle.
extern const PendingPick DifferencePick, CentrePick, AxisPick, AnglePick;

/// Shows the status that belongs to the page.
void ShowPositionStatus();

/// The vertex picked first (model space), and how many there are: 0 or 1.
extern double OffsetVertex[3];
extern int OffsetVertexIndex;

/// Overlay: the axis of rotation while the gizmo shows its page.
void ShowRotationAxis(View* view);
