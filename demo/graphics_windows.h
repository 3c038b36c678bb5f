// The windows of the graphics demonstration: what they show, without the loop that runs them. The tests draw them too.
#pragma once

namespace demo {

// Opens all windows at fixed places on a screen of at least 1000 x 700.
void OpenWindows();
// Draws the content of a window again (0: every window), as after REDRAW.
void DrawWindow(int id);
// The window of the scene, which turns.
int SceneWindow();
// Turns the scene by some degrees and draws it.
void TurnScene(double degrees);

// A closed rubber band in the overlay from one screen position to another; erases the former one. Nothing when both are
// the same.
void DrawRubberBand(int x1, int y1, int x2, int y2);
// A dot in the front buffer of the current window.
void DrawDot(int x, int y);

// The windows are closed; releases what drawing kept.
void Forget();

} // namespace demo
