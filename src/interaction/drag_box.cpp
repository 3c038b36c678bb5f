#include "interaction/drag_box.h"

#include "gooey/draw.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/system.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

int DragLeft, DragRight, DragBottom, DragTop;

namespace {

constexpr int BandIndex = 1;
constexpr int StepTicks = 3;
constexpr double SmallestDiagonal = 2.0; // pixels

struct Corner {
    int X, Y;

    bool operator==(const Corner&) const = default;
};

/// Draws the band in the overlay, or erases it with index 0. The window draws normally again afterwards: it may be
/// redrawn at any time meanwhile.
void DrawBand(Corner from, Corner to, int index) {
    const std::int32_t corners[4][2] = {{from.X, from.Y}, {to.X, from.Y}, {to.X, to.Y}, {from.X, to.Y}};
    gl::drawmode(gl::PUPDRAW);
    VanillaView();
    gl::mapcolor(BandIndex, 255, 0, 0);
    gl::color(index);
    gl::bgnclosedline();
    for (const std::int32_t* corner : corners)
        gl::v2i(corner);
    gl::endclosedline();
    gl::drawmode(gl::NORMALDRAW);
}

/// The pointer, as a corner of a band that begins at `from`.
Corner CornerAtPointer(Corner from, int square) {
    int dx = MouseX - from.X, dy = MouseY - from.Y;
    if (square) {
        const int side = std::min(std::abs(dx), std::abs(dy));
        dx = dx < 0 ? -side : side;
        dy = dy < 0 ? -side : side;
    }
    return {from.X + dx, from.Y + dy};
}

} // namespace

void DragBox(int x, int y, int width, int height, int square) {
    const Corner from = {MouseX, MouseY};
    Corner to = from;
    auto follow = [&] {
        Corner corner = CornerAtPointer(from, square);
        corner.X = std::max(x, std::min(corner.X, x + width - 1));
        corner.Y = std::max(y, std::min(corner.Y, y + height - 1));
        return corner;
    };
    while (!ButtonReleased(gl::LEFTMOUSE)) {
        ReadMousePos();
        gl::sginap(StepTicks);
        const Corner corner = follow();
        if (corner == to)
            continue;
        DrawBand(from, to, 0);
        to = corner;
        DrawBand(from, to, BandIndex);
    }
    DrawBand(from, to, 0);
    // The release has brought the pointer up to date: a drag quicker than a step counts whole.
    to = follow();
    DragLeft = std::min(from.X, to.X);
    DragRight = std::max(from.X, to.X);
    DragBottom = std::min(from.Y, to.Y);
    DragTop = std::max(from.Y, to.Y);
}

int DragWasClick() {
    return std::hypot(DragRight - DragLeft, DragTop - DragBottom) < SmallestDiagonal;
}
