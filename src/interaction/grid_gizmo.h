#pragma once

struct ToolWindow;

// The grid gizmo: the window that shows, sizes, turns, moves and aligns the grids of the views.

extern const ToolWindow GridWindow;

/// Its last upper left corner, screen pixels, and a flag: there is one. Kept with the defaults.
extern int GridX, GridY, GridGizmoOpened;
/// Flag: it was open when the program ended last.
extern int GridOpen;
/// Flag: it has its compact form, with nothing that would turn or move the grid.
extern int GridGizmoDisabled;

/// Opens the gizmo, or raises it.
void OpenGridGizmo();

/// Give it its compact form while a tool wants the grid where it is, and its full size again.
void DisableGridGizmo();
void EnableGridGizmo();

/// The grid is drawn, or not.
void ShowGrid(int show);
/// Another grid is shown: the choices and the angle of the one before mean nothing any more.
void DirtyGrid();

/// The angle that the gizmo's dial and number show, degrees; the grid stays.
void SetGridAngle(double degrees);

/// Overlay that draws nothing: has the gizmo drawn again when the views show a grid of another size than it does.
void FollowGridSize(struct View* view);
