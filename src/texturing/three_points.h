#pragma once

struct View;

// The three-point projection: a frame of three points in the grid's plane, which are dragged, lays the texture on the
// selected polygons along the direction of the view in which it began.

/// Starts the tool on the selected polygons.
void ApplyTexture3Point();

/// Shows the frame in a view while the tool runs: a lattice of texture repeats with its points. An overlay of the band
/// Model.
void DrawTexture3Point(View* view);
