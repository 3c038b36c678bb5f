#pragma once

// Samples of a material: what it looks like on a sphere, in the lighting of the model views.

/// Draws a sphere of the bound material into the current window, its middle and radius in pixels. A depth of 5 is
/// smooth at any of the sizes that palettes have.
void Sweetie(float x, float y, float radius, int depth);
