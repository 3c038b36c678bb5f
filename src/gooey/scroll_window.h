#pragma once

#include "gooey/gadget.h"

#include <cstdint>
#include <vector>

// A gadget that shows a part of something larger through scroll bars. Sizes and offsets are pixels.

/// Flags of AddScrollWindow.
inline constexpr int ScrollHorizontal = 1;
inline constexpr int ScrollVertical = 2;
inline constexpr int ScrollBorder = 4;
/// The arrows make one step a click.
inline constexpr int ScrollNoAutoRepeat = 8;

/// The thickness of a bar.
inline constexpr int ScrollBarWidth = 20;

struct ScrollWindow {
    /// The whole, in window pixels, and the part of it that shows content.
    std::int32_t X, Y, W, H;
    std::int32_t InnerX, InnerY, InnerW, InnerH;
    std::int32_t ContentW, ContentH;
    std::uint32_t Colour;
    std::int32_t HBar, VBar, Border;

    /// The content is wider than what shows.
    std::int32_t HNeeded;
    std::int32_t HBarX, HBarY;
    /// Pixels of content scrolled out at the left.
    std::int32_t HOffset;
    /// The thumb's length, and its place counted from the end of the left arrow.
    std::int32_t HThumb, HThumbPos;
    /// Pixels that an arrow moves the content.
    std::int32_t HStep;

    /// The same upwards: VOffset counts what is scrolled out at the top, VThumbPos downwards from the top arrow's end.
    std::int32_t VNeeded;
    std::int32_t VBarX, VBarY;
    std::int32_t VOffset;
    std::int32_t VThumb, VThumbPos;
    std::int32_t VStep;

    /// The arrow is held.
    std::int32_t LeftPressed, RightPressed, TopPressed, BottomPressed;
    std::int32_t AutoRepeat;
    /// Draws the visible part of the content.
    void (*DrawFn)(int innerX, int innerY, int innerW, int innerH, int hOffset, int vOffset);
    /// Called before everything is drawn, so that the owner can tell a new content size (ConfigureScroll); or null.
    void (*ConfigureFn)(Gadget* gadget);
    /// Lists the visible rows for reports and scripts; null: there are none. Set by the owner.
    void (*ListItems)(const Gadget* gadget, std::vector<GadgetItem>& items);
    Gadget* Self;
    /// Draws the visible part of the content in place of DrawFn. Null: DrawFn does.
    void (*DrawContents)(Gadget* gadget);
    /// The rows of a list; of list_gadget.h.
    void* Rows;
};

/// What a scroll window is made of.
struct ScrollWindowSpec {
    int X = 0, Y = 0, Width = 0, Height = 0;
    int Flags = 0;
    int ContentWidth = 0, ContentHeight = 0;
    /// Pixels that an arrow moves the content.
    int StepX = 0, StepY = 0;
    /// See ScrollWindow::ConfigureFn and DrawFn.
    void (*Configure)(Gadget* gadget) = nullptr;
    void (*Draw)(int innerX, int innerY, int innerW, int innerH, int hOffset, int vOffset) = nullptr;
};

Gadget* AddScrollWindow(const ScrollWindowSpec& spec);

/// The record of such a gadget.
ScrollWindow& ScrollOf(const Gadget* gadget);

/// Gives the gadget a new place (x or y below 0 keeps the old one), size and content size; the offsets are kept where
/// they still can be. Draws nothing.
void ConfigureScroll(Gadget* gadget, int x, int y, int w, int h, int contentW, int contentH);

/// Whether content of this length needs scrolling in a bar of length `visible`, and the length of its thumb.
int ScrollSizeCalc(int visible, int content, int& thumb);
/// Where the thumbs belong for the present offsets.
int CalcXScrollPos(const ScrollWindow& s);
int CalcYScrollPos(const ScrollWindow& s);

/// Scrolls to an offset, within the content, and shows it. 1 when something changed.
int ScrollXTo(Gadget* gadget, int offset);
int ScrollYTo(Gadget* gadget, int offset);

/// One step of an arrow: to what lies at the left or right, further down (the content moves up) or further up.
void ScrollXLeft(Gadget* gadget);
void ScrollXRight(Gadget* gadget);
void ScrollYUp(Gadget* gadget);
void ScrollYDown(Gadget* gadget);

/// One step of a thumb's drag: takes the thumb to the pointer.
void ScrollXDrag(Gadget* gadget);
void ScrollYDrag(Gadget* gadget);

void DrawScrollWindow(Gadget* gadget);
void DrawScrollWindowContents(const ScrollWindow& s);
/// A bar; `full` includes the boxes of its arrows.
void DrawXScroll(const ScrollWindow& s, int full);
void DrawYScroll(const ScrollWindow& s, int full);
/// The triangles on the arrows of a bar.
void DrawXScrollArrows(const ScrollWindow& s, int shade);
void DrawYScrollArrows(const ScrollWindow& s, int shade);
/// Shows, in place, that a bar's thumb and the content have moved.
void UpdateXScroll(const ScrollWindow& s);
void UpdateYScroll(const ScrollWindow& s);
/// The look of an arrow when it is pressed and when it is let go, in what the user sees.
void ScBStart(int x, int y, int w, int h);
void ScBStop(int x, int y, int w, int h, std::uint32_t colour);

/// A press of the left button: 1 when an arrow or a track took it, 0 for the content.
int CheckScrollClick(Gadget* gadget);
