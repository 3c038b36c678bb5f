#pragma once

#include "store/records.h"
#include "views/traversal.h"

#include <cstdint>

// Markers of vertices and of picked points: squares of 3 pixels that face the eye, whatever the zoom and the depth, in
// their colour with a dark heart.

inline constexpr std::uint32_t MarkerWhite = 0xFFFFFF, MarkerRed = 0xFF0000FF; // packed colours

/// Flag: the selected vertices of the current object are labelled with their coordinates.
extern int LabelSelectedVertices;

/// The markers of an object: all vertices that are seen, or those that are selected or loose; then the new vertices of
/// the tools, of which the newest always shows through.
void DrawVertices(const ShownObject& shown);

/// Releases what is kept of them in graphics memory, before the graphics layer ends.
void ReleaseKeptMarkers();

/// Red markers at points that a tool has picked (model space, 3 doubles each), for overlays of the band Model.
void DrawPickedPoints(View* view, const double* points, int count);
