#include "interaction/drag_box.h"

#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/gadget_kind.h"
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

/// A corner follows the pointer from where it is now, within limits.
class BandDrag : public Drag {
  public:
    BandDrag(const GadgetBox& limits, int square) : Limits(limits), Square(square), From{MouseX, MouseY}, To(From) {}

  protected:
    bool Step() override {
        Corner corner = CornerAtPointer(From, Square);
        corner.X = std::max(Limits.X, std::min(corner.X, Limits.X + Limits.Width - 1));
        corner.Y = std::max(Limits.Y, std::min(corner.Y, Limits.Y + Limits.Height - 1));
        const bool changed = !(corner == To);
        To = corner;
        return changed;
    }

    void Show() override {
        DrawBand(From, Shown, 0);
        DrawBand(From, To, BandIndex);
        Shown = To;
        gl::sginap(StepTicks);
    }

    bool Cancel() override { return true; }

    void End() override {
        DrawBand(From, Shown, 0);
        DragLeft = std::min(From.X, To.X);
        DragRight = std::max(From.X, To.X);
        DragBottom = std::min(From.Y, To.Y);
        DragTop = std::max(From.Y, To.Y);
    }

  private:
    GadgetBox Limits;
    int Square;
    Corner From, To, Shown = From;
};

} // namespace

int DragBox(int x, int y, int width, int height, int square) {
    return BandDrag({x, y, width, height}, square).Run();
}

int DragWasClick() {
    return std::hypot(DragRight - DragLeft, DragTop - DragBottom) < SmallestDiagonal;
}
