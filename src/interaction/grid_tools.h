#pragma once

struct View;

// The tools of the grid: clicks in the views that align it to vertices, to a polygon, or to the pointer. They come
// before the running tool; the grid gizmo starts them, and takes no input while one waits.

/// Vertices picked for an alignment to three of them (model space), and how many of them there are.
extern double GridAlign[3][3];
extern int GridAlignIndex;

/// What the grid gizmo shows as chosen; -1: nothing.
extern int GridAxisChoice, GridAlignChoice, GridOffsetChoice;

/// Start the tools. In object mode, with a single polygon selected and the 3D view in the first viewport, the alignment
/// to a polygon is done at once.
void StartGridToVertex();
void StartGridWithMouse();
void StartGridToVertices();
void StartGridToPolygon();

/// Ends the tool that waits, without a result, if the character is Escape; nothing when none waits.
void EndGridTool(View* view, int character);
/// 1 while one waits.
int GridToolRuns();
