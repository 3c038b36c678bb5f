#include "gooey/scroll_window.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/scroll_bar.h"
#include "gooey/window.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int BorderWidth = 4;
constexpr int LeastThumb = 10;
/// A notch of the wheel moves by about three rows of a list.
constexpr int PixelsPerNotch = 57;

/// The pointer minus the thumb's centre when the thumb was taken, and the pointer at the last step.
int Grab = 0, LastPointer = 0;

ScrollBar BarOf(ScrollWindow& s, bool vertical) {
    return vertical ? VerticalBarOf(s) : HorizontalBarOf(s);
}

/// The bar of a record that is only looked at.
ScrollBar BarOf(const ScrollWindow& s, bool vertical) {
    return BarOf(const_cast<ScrollWindow&>(s), vertical);
}

/// The pointer along the bar.
int PointerAlong(const ScrollBar& bar) {
    return bar.Vertical ? MouseY : MouseX;
}

void UpdateBar(const ScrollWindow& s, bool vertical) {
    SetColour(s.Colour);
    DrawScrollWindowContents(s);
    SetColour(s.Colour);
    DrawScrollBar(BarOf(s, vertical), 0);
}

void ShowChange(Gadget* gadget, bool vertical) {
    if (CurrentWindow->Flags & WindowDoubleBuffered)
        RedrawCurrentWindow();
    else
        UpdateBar(ScrollOf(gadget), vertical);
}

int ScrollTo(Gadget* gadget, bool vertical, int offset) {
    ScrollBar bar = BarOf(ScrollOf(gadget), vertical);
    offset = bar.Needed ? std::clamp(offset, 0, bar.MaximalOffset()) : 0;
    if (offset == bar.Offset)
        return 0;
    bar.Offset = offset;
    bar.ThumbPos = ThumbPositionOf(bar);
    ShowChange(gadget, vertical);
    return 1;
}

void ScrollByStep(Gadget* gadget, bool vertical, int direction) {
    ScrollBar bar = BarOf(ScrollOf(gadget), vertical);
    ScrollTo(gadget, vertical, bar.Offset + direction * bar.Step);
}

void DragThumb(Gadget* gadget, bool vertical) {
    ScrollBar bar = BarOf(ScrollOf(gadget), vertical);
    if (!bar.Needed || PointerAlong(bar) == LastPointer)
        return;
    LastPointer = PointerAlong(bar);
    int pointer = LastPointer - Grab;
    int position = vertical ? bar.Y + bar.Visible - ScrollBarWidth - bar.Thumb / 2 - pointer + 1
                            : pointer - (bar.X + bar.Thumb / 2) - ScrollBarWidth + 1;
    position = std::clamp(position, 0, std::max(bar.Travel(), 0));
    int offset = bar.Travel() > 0 ? static_cast<int>(std::int64_t{position} * bar.MaximalOffset() / bar.Travel()) : 0;
    if (position == bar.ThumbPos && offset == bar.Offset)
        return;
    bar.ThumbPos = position;
    bar.Offset = offset;
    ShowChange(gadget, vertical);
}

/// Runs a step once or while the button is held, until the gadget is gone.
void StepWhileHeld(Gadget* gadget, void (*step)(Gadget*), bool repeat) {
    Window* window = CurrentWindow;
    if (!repeat) {
        step(gadget);
        return;
    }
    RepeatWhileHeld([&] {
        if (CurrentWindow == window && WindowOf(gadget) == window)
            step(gadget);
    });
}

void HoldArrow(Gadget* gadget, const GadgetBox& box, std::int32_t& pressed, void (*step)(Gadget*)) {
    const ScrollWindow& s = ScrollOf(gadget);
    Window* window = CurrentWindow;
    SetColour(s.Colour);
    ScBStart(box.X, box.Y, box.Width, box.Height);
    pressed = 1;
    StepWhileHeld(gadget, step, s.AutoRepeat);
    if (WindowOf(gadget) != window)
        return;
    pressed = 0;
    ScBStop(box.X, box.Y, box.Width, box.Height, s.Colour);
}

/// The functions of a bar, for clicks.
struct BarSteps {
    void (*First)(Gadget*);
    void (*Last)(Gadget*);
    void (*Drag)(Gadget*);
};

constexpr BarSteps HorizontalSteps = {ScrollXLeft, ScrollXRight, ScrollXDrag};
constexpr BarSteps VerticalSteps = {ScrollYDown, ScrollYUp, ScrollYDrag};

void TakeThumb(Gadget* gadget, const ScrollBar& bar, void (*drag)(Gadget*)) {
    GadgetBox thumb = bar.ThumbBox();
    Grab = 0;
    if (MouseInGadgetBox(thumb))
        Grab = bar.Vertical ? MouseY - (thumb.Y + thumb.Height / 2) : MouseX - (thumb.X + thumb.Width / 2);
    LastPointer = Grab ? PointerAlong(bar) : INT32_MIN;
    StepWhileHeld(gadget, drag, true);
}

int ClickBar(Gadget* gadget, bool vertical) {
    ScrollBar bar = BarOf(ScrollOf(gadget), vertical);
    if (!bar.Present || !bar.Needed)
        return 0;
    const BarSteps& steps = vertical ? VerticalSteps : HorizontalSteps;
    if (MouseInGadgetBox(bar.FirstArrow()))
        HoldArrow(gadget, bar.FirstArrow(), bar.FirstPressed, steps.First);
    else if (MouseInGadgetBox(bar.LastArrow()))
        HoldArrow(gadget, bar.LastArrow(), bar.LastPressed, steps.Last);
    else if (MouseInGadgetBox(bar.Track()))
        TakeThumb(gadget, bar, steps.Drag);
    else
        return 0;
    return 1;
}

void DescribeScrollWindow(const Gadget* gadget, GadgetDescription& description) {
    const ScrollWindow& s = ScrollOf(gadget);
    description.Box = {s.X, s.Y, s.W, s.H};
    if (s.ListItems)
        s.ListItems(gadget, description.Items);
}

/// Pixels for a turn of the wheel: whole steps, several where they are small.
int WheelDistance(int turn, int step) {
    step = std::max(step, 1);
    return WholeNotches(turn) * step * ((PixelsPerNotch + step - 1) / step);
}

int WheelScrollWindow(Gadget* gadget, int turnX, int turnY) {
    const ScrollWindow& s = ScrollOf(gadget);
    if (!MouseInBox(s.X, s.Y, s.W, s.H))
        return 0;
    if (turnY)
        ScrollYTo(gadget, s.VOffset - WheelDistance(turnY, s.VStep));
    if (turnX)
        ScrollXTo(gadget, s.HOffset + WheelDistance(turnX, s.HStep));
    return 1;
}

constexpr GadgetKind ScrollKind = {"scroll", DescribeScrollWindow, WheelScrollWindow, nullptr};

} // namespace

Gadget* AddScrollWindow(const ScrollWindowSpec& spec) {
    Gadget* gadget = CreateGadget<ScrollWindow>();
    ScrollWindow& s = ScrollOf(gadget);
    s.Self = gadget;
    s.Colour = GadgetColour();
    s.HBar = (spec.Flags & ScrollHorizontal) != 0;
    s.VBar = (spec.Flags & ScrollVertical) != 0;
    s.Border = (spec.Flags & ScrollBorder) != 0;
    s.AutoRepeat = !(spec.Flags & ScrollNoAutoRepeat);
    s.HStep = spec.StepX;
    s.VStep = spec.StepY;
    s.ConfigureFn = spec.Configure;
    s.DrawFn = spec.Draw;
    gadget->DrawFn = DrawScrollWindow;
    gadget->ClickFn = CheckScrollClick;
    gadget->Kind = &ScrollKind;
    s.X = spec.X;
    s.Y = spec.Y;
    ConfigureScroll(gadget, spec.X, spec.Y, spec.Width, spec.Height, spec.ContentWidth, spec.ContentHeight);
    GooeyRight = spec.X + spec.Width + 8;
    return gadget;
}

ScrollWindow& ScrollOf(const Gadget* gadget) {
    return GadgetData<ScrollWindow>(gadget);
}

void ConfigureScroll(Gadget* gadget, int x, int y, int w, int h, int contentW, int contentH) {
    ScrollWindow& s = ScrollOf(gadget);
    if (x >= 0)
        s.X = x;
    if (y >= 0)
        s.Y = y;
    s.W = w;
    s.H = h;
    s.ContentW = contentW;
    s.ContentH = contentH;
    int inset = s.Border ? BorderWidth : 0;
    int below = s.HBar ? ScrollBarWidth : 0, beside = s.VBar ? ScrollBarWidth : 0;
    s.InnerX = s.X + inset;
    s.InnerY = s.Y + inset + below;
    s.InnerW = w - 2 * inset - beside;
    s.InnerH = h - 2 * inset - below;
    s.HBarX = s.InnerX;
    s.HBarY = s.InnerY - ScrollBarWidth;
    s.VBarX = s.InnerX + s.InnerW;
    s.VBarY = s.InnerY;
    for (bool vertical : {false, true}) {
        ScrollBar bar = BarOf(s, vertical);
        if (bar.Present)
            FitScrollBar(bar);
    }
}

int ScrollSizeCalc(int visible, int content, int& thumb) {
    if (content == 0) {
        thumb = visible;
        return 0;
    }
    thumb = static_cast<int>((visible - 2 * ScrollBarWidth) * std::int64_t{visible} / content);
    thumb = std::max(thumb, LeastThumb);
    return visible < content;
}

int CalcXScrollPos(const ScrollWindow& s) {
    return ThumbPositionOf(BarOf(s, false));
}

int CalcYScrollPos(const ScrollWindow& s) {
    return ThumbPositionOf(BarOf(s, true));
}

int ScrollXTo(Gadget* gadget, int offset) {
    return ScrollTo(gadget, false, offset);
}

int ScrollYTo(Gadget* gadget, int offset) {
    return ScrollTo(gadget, true, offset);
}

void ScrollXLeft(Gadget* gadget) {
    ScrollByStep(gadget, false, -1);
}

void ScrollXRight(Gadget* gadget) {
    ScrollByStep(gadget, false, 1);
}

void ScrollYUp(Gadget* gadget) {
    ScrollByStep(gadget, true, 1);
}

void ScrollYDown(Gadget* gadget) {
    ScrollByStep(gadget, true, -1);
}

void ScrollXDrag(Gadget* gadget) {
    DragThumb(gadget, false);
}

void ScrollYDrag(Gadget* gadget) {
    DragThumb(gadget, true);
}

void DrawScrollWindow(Gadget* gadget) {
    ScrollWindow& s = ScrollOf(gadget);
    if (s.ConfigureFn)
        s.ConfigureFn(gadget);
    SetColour(s.Colour);
    if (s.Border)
        DrawLoweredBorder(s.X, s.Y, s.W, s.H);
    DrawScrollWindowContents(s);
    SetColour(s.Colour);
    if (s.HBar && s.VBar)
        DrawBox(s.VBarX, s.HBarY, ScrollBarWidth, ScrollBarWidth, ShadeNeutral);
    if (s.HBar)
        DrawXScroll(s, 1);
    if (s.VBar)
        DrawYScroll(s, 1);
}

void DrawScrollWindowContents(const ScrollWindow& s) {
    if (s.InnerW <= 0 || s.InnerH <= 0)
        return;
    if (s.DrawContents)
        s.DrawContents(s.Self);
    else if (s.DrawFn)
        s.DrawFn(s.InnerX, s.InnerY, s.InnerW, s.InnerH, s.HOffset, s.VOffset);
}

void DrawXScroll(const ScrollWindow& s, int full) {
    DrawScrollBar(BarOf(s, false), full);
}

void DrawYScroll(const ScrollWindow& s, int full) {
    DrawScrollBar(BarOf(s, true), full);
}

void DrawXScrollArrows(const ScrollWindow& s, int shade) {
    DrawScrollArrows(BarOf(s, false), shade);
}

void DrawYScrollArrows(const ScrollWindow& s, int shade) {
    DrawScrollArrows(BarOf(s, true), shade);
}

void UpdateXScroll(const ScrollWindow& s) {
    UpdateBar(s, false);
}

void UpdateYScroll(const ScrollWindow& s) {
    UpdateBar(s, true);
}

void ScBStart(int x, int y, int w, int h) {
    if (CurrentWindow->Crazy)
        return;
    FrontBufferScope front;
    DrawFrame(x, y, w, h, ShadeBlack);
}

void ScBStop(int x, int y, int w, int h, std::uint32_t colour) {
    FrontBufferScope front;
    SetColour(colour);
    DrawRaisedBorder(x, y, w, h);
}

int CheckScrollClick(Gadget* gadget) {
    return ClickBar(gadget, false) || ClickBar(gadget, true);
}
