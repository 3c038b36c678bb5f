#pragma once

// The three buttons of the material palette that choose the lighting of new polygons: unlit, faceted and smooth, each
// shown on the current material.

/// Adds them to the current window.
void AddLightingButtons();
/// Draws them, with the outline of the chosen one, into the current window.
void DrawLightingButtons();
/// A press of the left button: chooses the lighting under the pointer. 0 when it is on none of the buttons.
int CheckLighting();
