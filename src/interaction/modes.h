#pragma once

// What is worked on: the scene or one object (ObjectIsolated), and of an object its vertices or its polygons.

/// Flag of object mode: vertices (1) or polygons (0) are worked on.
extern int WorkMode;

/// Change what is worked on. The selection goes along: from polygons to the vertices that they use, and from vertices
/// to the polygons that they make up.
void SetVertexMode();
void SetPolygonMode();

/// Toggles object and scene mode, unless a tool runs.
void ChangeObjectIsolation();
