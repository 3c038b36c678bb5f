#pragma once

// The gadgets of the position gizmo's window: three pages of which one is shown, and the buttons below them.

inline constexpr int PositionGizmoWidth = 505, PositionGizmoHeight = 300;

/// Adds them to the current window.
void AddPositionPages();
/// Shows the page and all numbers of the present state, as after Undo.
void ShowPositionPage();
/// Shows the numbers of the present state at once.
void ShowPositionNumbers();
/// A pick has ended, settled or given up: choices that waited for it are shown as they are.
void PositionPickEnded();

/// SetRoundedOffset, which the window shows, with `redraw` at once.
void ChangeOffset(int axis, double value, int redraw, int force);
