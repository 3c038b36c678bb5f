#pragma once

struct Gadget;
struct Window;

// Gadgets without the mouse: Tab and Shift+Tab walk through the buttons, check boxes, steppers, sliders and inputs of a
// window, in the order in which they are read; Space or Return presses the one that the walk stands on, the arrow keys
// step a value. A frame shows where the walk stands, and another which button Return presses.

/// A key typed into the window, before its gadgets get it: 1 when it belonged to the gadget that the walk stands on.
int KeyInWalk(Window* window, int character);

/// A key that no gadget of the window took: 1 when it began a walk.
int BeginWalk(Window* window, int character);

/// Goes on from a gadget of the window to the next, or the one before. 0: there is no other.
int WalkFrom(Gadget* gadget, bool back);

/// A click ends the walk.
void EndWalk(Window* window);

/// Marks a button of a group of the current window, the first being 0, as the one that Return presses; the window's
/// event function sees to the key.
void SetDefaultButton(const Gadget* group, int index);

/// Draws the frames around the gadgets of the current window that have them.
void DrawKeyboardFrames();
