// The pointer's pictures: the program's own shapes (see cursors.h) and those that the layer shows over frames.
#pragma once

#include "platform/screen_windows.h"

#include <cstdint>
#include <vector>

namespace gl {

// Rows from the top, packed 0xAABBGGRR, alpha 0 or 255; the hot spot from the top-left corner.
struct PointerShape {
    int Width = 0, Height = 0, HotX = 0, HotY = 0;
    std::vector<std::uint32_t> Pixels;
};

// What the pointer looks like over a window's content; the arrow for a shape that is not defined.
const PointerShape& ShapeOfCursor(int index);
// Over a part of a frame: arrows in the directions in which its edge or corner can be pulled; else the plain arrow.
const PointerShape& ShapeOverFrame(FramePart part);
// The same shape with every pixel `factor` times as wide and high.
PointerShape Enlarged(const PointerShape& shape, int factor);
// Forgets the program's shapes.
void ForgetCursors();

// Called when a shape or what a window shows may have changed: the display then looks again. Null when unused.
extern void (*PointerShapeChanged)();

} // namespace gl
