#pragma once

/// Lifts each selected polygon of the current object, with its sub-polygons, and joins its old outline and its new one
/// by walls; the user sets the height with the ruler. Tells when none is selected.
void LiftPolygons();
