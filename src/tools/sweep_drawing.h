#pragma once

struct Sweep;

/// Draws the sweep as its polygons will look, into the current window, whose matrices are set; its mesh is made anew if
/// it is out of date. While a view moves in wire frame, only its lines.
void DrawSweepMesh(Sweep& sweep);
