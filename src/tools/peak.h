#pragma once

/// Replaces each selected polygon of the current object by triangles that meet above its middle, at a height that the
/// user sets with the ruler. Polygons with sub-polygons are left alone, and the user is told. Tells when none is
/// selected.
void PeakPolygons();
