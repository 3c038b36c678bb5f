#pragma once

#include "store/view_record.h"

#include <cstdint>

// The position gizmo in the model views: its drags, the vertices that it asks for, its keys and menu, and the axis that
// it turns about.

/// The status of the gizmo; ended by 0.
extern const std::int16_t PositionStatus[];

void PositionLeft(View* view);
void PositionMenu(View* view);
int PositionKey(View* view, int character);

/// What the next click in a view picks.
enum class PositionPick { None, FromVertex, ToVertex, Centre, Axis, AngleFrom, AngleTo };

/// Waits for a vertex; meanwhile all vertices are shown and, but for translations, the gizmo takes no input.
void BeginPositionPick(PositionPick pick);
/// Gives the pick up; nothing when there is none.
void EndPositionPick();
PositionPick PendingPositionPick();

/// The status that belongs to what the gizmo waits for, else to its page.
void ShowPositionStatus();

/// The vertices picked first (model space), and how many of them are shown: 0 or 1.
extern double OffsetVertex[3];
extern int OffsetVertexIndex;

/// Overlays: the axis of rotation while the gizmo shows its page, and the vertex picked first.
void ShowRotationAxis(View* view);
void DrawOffsetVertex(View* view);
