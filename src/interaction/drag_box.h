#pragma once

// The rubber band.

/// The box dragged last, window pixels, edges included: left <= right, bottom <= top.
extern int DragLeft, DragRight, DragBottom, DragTop;

/// Follows the pointer with a box from where it is until the left button is released. The corner in hand stays within
/// the rectangle at (x, y); with `square` the sides are equal. 0 when Escape gave it up.
int DragBox(int x, int y, int width, int height, int square);

/// 1 when the box is too small for a box: the gesture was a click.
int DragWasClick();
