#pragma once

#include "gooey/gadget_kind.h"
#include "gooey/scroll_window.h"

// One bar of a scroll window, whichever way it lies: what both have in common is done once, along the bar. Positions
// along a bar count from the end where offset 0 is: rightwards in a horizontal bar, downwards in a vertical one.

struct ScrollBar {
    bool Vertical;
    /// Whether the window has this bar.
    bool Present;
    int X, Y;
    /// Of the visible area and the content along the bar.
    int Visible, Content;
    int Step;
    std::int32_t &Needed, &Offset, &Thumb, &ThumbPos;
    /// The arrow at offset 0 (left, top) and the other one are held.
    std::int32_t &FirstPressed, &LastPressed;

    int MaximalOffset() const { return Content - Visible; }

    /// How far the thumb can move.
    int Travel() const { return Visible - Thumb - 2 * ScrollBarWidth; }

    /// The part of the bar from one place along it, `length` long, less the line that separates it from the content.
    GadgetBox Section(int from, int length) const;

    GadgetBox Whole() const { return Section(0, Visible); }

    GadgetBox FirstArrow() const { return Section(0, ScrollBarWidth); }

    GadgetBox LastArrow() const { return Section(Visible - ScrollBarWidth, ScrollBarWidth); }

    GadgetBox Track() const { return Section(ScrollBarWidth, Visible - 2 * ScrollBarWidth); }

    GadgetBox ThumbBox() const { return Section(ScrollBarWidth + ThumbPos, Thumb); }
};

ScrollBar HorizontalBarOf(ScrollWindow& s);
ScrollBar VerticalBarOf(ScrollWindow& s);

/// Recomputes thumb and need from the sizes, and keeps the offset within the content.
void FitScrollBar(ScrollBar& bar);
/// Where the thumb belongs for the present offset.
int ThumbPositionOf(const ScrollBar& bar);

void DrawScrollBar(const ScrollBar& bar, int full);
void DrawScrollArrows(const ScrollBar& bar, int shade);
