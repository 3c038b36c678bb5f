#pragma once

// What the tools ask for before they start. A guard that refuses has told the user why.

/// Some polygons of the current object are selected. Nothing is told while a texture is being applied.
int SomePolygonsSelected();
/// Exactly one is.
int APolygonIsSelected();
/// Some vertices are.
int SomeVerticesSelected();

/// An object is being edited, not the scene.
int CreationInObjectMode();
