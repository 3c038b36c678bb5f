#include "gooey/scroll_bar.h"

#include "gooey/draw.h"
#include "gooey/window.h"

#include "platform/drawing.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int ShadeArrow = 4, ShadeDimmedArrow = 2, ShadeDivider = 2;

void DrawBoxOf(const GadgetBox& box, int shade) {
    DrawBox(box.X, box.Y, box.Width, box.Height, shade);
}

/// A line across the bar at a place along it.
void DrawDivider(const ScrollBar& bar, int at) {
    DrawBoxOf(bar.Section(at, 1), ShadeDivider);
}

/// The line between the bar and the content.
void DrawEdge(const ScrollBar& bar) {
    if (bar.Vertical)
        DrawBox(bar.X, bar.Y, 1, bar.Visible, ShadeDivider);
    else
        DrawBox(bar.X, bar.Y + ScrollBarWidth - 1, bar.Visible, 1, ShadeDivider);
}

void DrawArrowBox(const GadgetBox& box, bool pressed) {
    DrawRaisedBox(box.X, box.Y, box.Width, box.Height);
    if (pressed && !CurrentWindow->Crazy)
        DrawFrame(box.X, box.Y, box.Width, box.Height, ShadeBlack);
}

/// A triangle whose tip and base lie that far from an end of the bar.
void DrawArrow(const ScrollBar& bar, int tip, int base) {
    const int along[3] = {tip, base, base}, across[3] = {10, 6, 14};
    gl::bgnpolygon();
    for (int i = 0; i < 3; ++i) {
        const std::int32_t horizontal[2] = {bar.X + along[i], bar.Y + across[i]};
        const std::int32_t vertical[2] = {bar.X + across[i], bar.Y + bar.Visible - along[i]};
        gl::v2i(bar.Vertical ? vertical : horizontal);
    }
    gl::endpolygon();
}

} // namespace

GadgetBox ScrollBar::Section(int from, int length) const {
    constexpr int thickness = ScrollBarWidth - 1;
    if (Vertical)
        return {X + 1, Y + Visible - from - length, thickness, length};
    return {X + from, Y, length, thickness};
}

ScrollBar HorizontalBarOf(ScrollWindow& s) {
    return {false,     s.HBar != 0, s.HBarX,  s.HBarY,     s.InnerW,      s.ContentW,    s.HStep,
            s.HNeeded, s.HOffset,   s.HThumb, s.HThumbPos, s.LeftPressed, s.RightPressed};
}

ScrollBar VerticalBarOf(ScrollWindow& s) {
    return {true,      s.VBar != 0, s.VBarX,  s.VBarY,     s.InnerH,     s.ContentH,     s.VStep,
            s.VNeeded, s.VOffset,   s.VThumb, s.VThumbPos, s.TopPressed, s.BottomPressed};
}

int ThumbPositionOf(const ScrollBar& bar) {
    if (!bar.Needed)
        return 0;
    return static_cast<int>(std::int64_t{bar.Offset} * bar.Travel() / bar.MaximalOffset());
}

void FitScrollBar(ScrollBar& bar) {
    bar.Needed = ScrollSizeCalc(bar.Visible, bar.Content, bar.Thumb);
    bar.Offset = bar.Needed ? std::clamp(bar.Offset, 0, bar.MaximalOffset()) : 0;
    bar.ThumbPos = ThumbPositionOf(bar);
}

void DrawScrollArrows(const ScrollBar& bar, int shade) {
    gl::cpack(Colour[shade]);
    DrawArrow(bar, 6, 14);
    DrawArrow(bar, bar.Visible - 6, bar.Visible - 14);
}

void DrawScrollBar(const ScrollBar& bar, int full) {
    if (!bar.Needed) {
        DrawBoxOf(bar.Whole(), ShadeNeutral);
        DrawDivider(bar, ScrollBarWidth - 1);
        DrawDivider(bar, bar.Visible - ScrollBarWidth);
        DrawScrollArrows(bar, ShadeDimmedArrow);
        DrawEdge(bar);
        return;
    }
    if (full) {
        DrawArrowBox(bar.FirstArrow(), bar.FirstPressed);
        DrawArrowBox(bar.LastArrow(), bar.LastPressed);
        DrawScrollArrows(bar, ShadeArrow);
    }
    int trackEnd = bar.Visible - ScrollBarWidth, thumbStart = ScrollBarWidth + bar.ThumbPos;
    DrawBoxOf(bar.Section(ScrollBarWidth, bar.ThumbPos), ShadeNeutral);
    DrawBoxOf(bar.Section(thumbStart + bar.Thumb, trackEnd - thumbStart - bar.Thumb), ShadeNeutral);
    GadgetBox thumb = bar.ThumbBox();
    DrawRaisedBox(thumb.X, thumb.Y, thumb.Width, thumb.Height);
    DrawEdge(bar);
}
