#include "gooey/menu_panel.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/menu.h"
#include "gooey/window.h"

#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/windows.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int ItemHeight = 23;
constexpr int SeparatorHeight = 3;
constexpr int TitleHeight = 25;
/// From the top-left corner of a level to the bottom of its title box.
constexpr int TitleAbovePanel = 8;
/// Of the frame around the panel: two lines and the black outline.
constexpr int FrameWidth = 3;
constexpr int StripHeight = 3;
constexpr int TextAboveItem = 6;

/// Indices of the overlay's colours.
enum MenuColour { Transparent, MenuGrey, MenuBlack, MenuWhite };

/// Fill patterns: each leaves out the pixels of the other.
constexpr int SolidPattern = 0;
constexpr int DisabledPattern = 1;
constexpr int HalftonePattern = 2;

bool ColoursLoaded = false;

/// Drawing into the overlay, anywhere on the screen, in pixels of the current window, for the length of a scope.
class MenuDrawing {
  public:
    MenuDrawing() {
        int x = 0, y = 0;
        gl::getorigin(&x, &y);
        gl::fullscrn();
        gl::drawmode(gl::PUPDRAW);
        gl::ortho2(-x - 0.5, hres - x + 0.5, -y - 0.5, vres - y + 0.5);
        if (ColoursLoaded)
            return;
        gl::mapcolor(MenuGrey, 172, 172, 172);
        gl::mapcolor(MenuBlack, 0, 0, 0);
        gl::mapcolor(MenuWhite, 255, 255, 255);
        ColoursLoaded = true;
    }

    ~MenuDrawing() {
        gl::drawmode(gl::NORMALDRAW);
        gl::endfullscrn();
        VanillaView();
    }

    MenuDrawing(const MenuDrawing&) = delete;
    MenuDrawing& operator=(const MenuDrawing&) = delete;
};

void Fill(const GadgetBox& box, int colour, int pattern = SolidPattern) {
    gl::color(colour);
    gl::setpattern(pattern);
    gl::rectfi(box.X, box.Y, box.X + box.Width - 1, box.Y + box.Height - 1);
    gl::setpattern(SolidPattern);
}

/// A checkerboard of two colours.
void FillHalftone(const GadgetBox& box, int colour, int over) {
    Fill(box, colour);
    Fill(box, over, HalftonePattern);
}

void DrawOutline(const GadgetBox& box, int colour) {
    gl::color(colour);
    gl::recti(box.X, box.Y, box.X + box.Width - 1, box.Y + box.Height - 1);
}

GadgetBox Grown(const GadgetBox& box, int margin) {
    return {box.X - margin, box.Y - margin, box.Width + 2 * margin, box.Height + 2 * margin};
}

void DrawPanelFrame(const GadgetBox& panel) {
    GadgetBox frame = Grown(panel, 2);
    DrawOutline(Grown(panel, FrameWidth), MenuBlack);
    FillHalftone({frame.X, frame.Y, 2, frame.Height}, MenuGrey, MenuBlack);
    FillHalftone({frame.X, frame.Y, frame.Width, 2}, MenuGrey, MenuBlack);
    Fill({frame.X, frame.Y + frame.Height - 2, frame.Width, 2}, MenuWhite);
    Fill({frame.X + frame.Width - 2, frame.Y, 2, frame.Height}, MenuWhite);
}

bool HasTitle(const MenuItem* first) {
    return first->Kind == MenuEntryTitle;
}

const MenuItem* ItemsOf(const MenuItem* first) {
    return HasTitle(first) ? first->Next : first;
}

MenuItem* ItemsOf(MenuItem* first) {
    return HasTitle(first) ? first->Next : first;
}

GadgetBox TitleBoxOf(const MenuItem* first) {
    constexpr int moreAtTheRight = 4;
    const int width = first->LabelWidth + 2 * first->TitleMargin + moreAtTheRight;
    return {first->OriginX, first->OriginY + TitleAbovePanel, width, TitleHeight};
}

/// The items with the strips above and below them.
GadgetBox PanelOf(const MenuItem* first) {
    const MenuItem* last = nullptr;
    for (const MenuItem* item = ItemsOf(first); item; item = item->Next)
        last = item;
    if (!last)
        return {first->OriginX, first->OriginY, 0, 0};
    int bottom = last->Y - StripHeight - (last->Kind == MenuEntrySeparated ? SeparatorHeight : 0);
    return {last->X, bottom, last->W, first->OriginY + 1 - bottom};
}

/// What all items of a level have to say about its width.
struct LevelMeasures {
    bool AnyTickBox = false, AnyShortcut = false, AnySubmenu = false, AnyHeading = false;
    int WidestText = 0, WidestShortcut = 0;

    int Margin() const { return AnyTickBox ? 28 : 8; }

    /// From the panel's left edge to the right edge of the shortcuts.
    int ShortcutRight() const { return Margin() + WidestText + (AnyHeading ? 12 : 0) + (AnyShortcut ? 40 : 0); }

    int Width() const { return ShortcutRight() + (AnySubmenu ? 8 : 0) + 12; }
};

/// Asks the check functions and measures the items.
LevelMeasures Measure(MenuItem* items) {
    LevelMeasures measures;
    for (MenuItem* item = items; item; item = item->Next) {
        item->CheckFlags = item->Check ? item->Check() : 0;
        item->Disabled = (item->CheckFlags & MenuDisabled) != 0;
        measures.AnyTickBox |= (item->CheckFlags & MenuHasTickBox) != 0;
        measures.AnyShortcut |= item->ShortcutText != nullptr;
        measures.AnySubmenu |= item->Submenu != nullptr;
        measures.AnyHeading |= item->Kind == MenuEntryHeading;
        measures.WidestText = std::max(measures.WidestText, item->LabelWidth + item->ShortcutWidth);
        measures.WidestShortcut = std::max(measures.WidestShortcut, item->ShortcutWidth);
    }
    return measures;
}

void PlaceItems(int x, int y, MenuItem* first) {
    MenuItem* items = ItemsOf(first);
    LevelMeasures measures = Measure(items);
    int width = measures.Width();
    first->OriginX = x;
    first->OriginY = y;
    if (HasTitle(first))
        width = std::max(width, TitleBoxOf(first).Width);
    int top = y - (items && items->Kind == MenuEntryHeading ? 0 : 2);
    for (MenuItem* item = items; item; item = item->Next) {
        item->OriginX = x;
        item->OriginY = y;
        item->X = x;
        item->Y = top - ItemHeight;
        item->W = width;
        item->H = ItemHeight;
        bool indented = measures.AnyHeading && item->Kind != MenuEntryHeading;
        item->LabelX = x + measures.Margin() + (indented ? 12 : 0);
        item->ShortcutX = x + measures.ShortcutRight() - (item->ShortcutWidth + measures.WidestShortcut) / 2;
        item->TickColumn = measures.AnyTickBox;
        top = item->Y - (item->Kind == MenuEntrySeparated ? SeparatorHeight : 0);
    }
}

/// How far a box must move to lie between 0 and `length`; its end goes first when it does not fit.
int MoveWithin(int start, int size, int length) {
    int end = std::min(start, length - size);
    return std::max(end, 0) - start;
}

struct Shift {
    int X, Y;
};

/// How far a level must move to lie on the screen, the top of one that is too high being shown.
Shift ShiftOntoScreen(const MenuItem* first) {
    int originX = 0, originY = 0;
    gl::getorigin(&originX, &originY);
    GadgetBox extent = MenuExtent(first);
    int x = extent.X + originX, top = vres + 1 - (extent.Y + originY + extent.Height);
    return {MoveWithin(x, extent.Width, hres + 1), -MoveWithin(top, extent.Height, vres + 1)};
}

void DrawHeading(const GadgetBox& box) {
    GadgetBox bar = {box.X - 2, box.Y, box.Width + 4, box.Height};
    Fill(bar, MenuGrey);
    Fill({bar.X, bar.Y + bar.Height - 2, bar.Width, 2}, MenuWhite);
    Fill({bar.X, bar.Y, 1, bar.Height}, MenuBlack);
    Fill({bar.X, bar.Y, bar.Width, 1}, MenuBlack);
}

void DrawSunkenBox(const GadgetBox& box, int face) {
    Fill(box, face);
    Fill({box.X, box.Y, 1, box.Height}, MenuWhite);
    Fill({box.X, box.Y, box.Width, 1}, MenuWhite);
    Fill({box.X, box.Y + box.Height - 1, box.Width, 1}, MenuBlack);
    Fill({box.X + box.Width - 1, box.Y, 1, box.Height}, MenuBlack);
}

void DrawTickBox(const MenuItem& item) {
    DrawSunkenBox({item.X + 7, item.Y + 5, 14, 14}, MenuGrey);
    if (!(item.CheckFlags & MenuTicked))
        return;
    gl::color(MenuBlack);
    DrawTick(item.X + 7, item.Y + 6, 14.4);
}

void DrawSubmenuArrow(const MenuItem& item) {
    const std::int32_t corners[3][2] = {
        {item.X + item.W - 4, item.Y + 11}, {item.X + item.W - 12, item.Y + 15}, {item.X + item.W - 12, item.Y + 7}};
    gl::color(MenuWhite);
    gl::bgnpolygon();
    for (const auto& corner : corners)
        gl::v2i(corner);
    gl::endpolygon();
    gl::color(MenuBlack);
    gl::bgnclosedline();
    for (const auto& corner : corners)
        gl::v2i(corner);
    gl::endclosedline();
    gl::setlinestyle(1);
    gl::bgnline();
    for (int corner : {2, 0}) {
        const std::int32_t below[2] = {corners[corner][0], corners[corner][1] - 1};
        gl::v2i(below);
    }
    gl::endline();
    gl::setlinestyle(0);
}

void DrawItem(const MenuItem& item) {
    GadgetBox box = {item.X, item.Y, item.W, item.H};
    if (item.Kind == MenuEntryHeading)
        DrawHeading(box);
    else if (item.Highlighted || item.Open)
        DrawSunkenBox(box, MenuGrey);
    else
        FillHalftone(box, MenuGrey, MenuWhite);
    if (item.Kind == MenuEntrySeparated) {
        FillHalftone({item.X, item.Y - 1, item.W, 1}, MenuGrey, MenuWhite);
        Fill({item.X, item.Y - 2, item.W, 1}, MenuBlack);
        Fill({item.X, item.Y - 3, item.W, 1}, MenuWhite);
    }
    if (item.TickColumn && item.CheckFlags & MenuHasTickBox)
        DrawTickBox(item);
    gl::color(MenuBlack);
    DrawMenuText(item.LabelX, item.Y + TextAboveItem, item.Label);
    if (item.ShortcutText)
        DrawMenuText(item.ShortcutX, item.Y + TextAboveItem, item.ShortcutText);
    if (item.Submenu)
        DrawSubmenuArrow(item);
    if (item.Disabled)
        Fill(box, MenuGrey, DisabledPattern);
}

void DrawTitle(const MenuItem* first) {
    GadgetBox box = TitleBoxOf(first);
    DrawPanelFrame(box);
    Fill(box, MenuGrey);
    gl::color(MenuBlack);
    DrawTextIn(first->TitleFont, first->OriginX + first->TitleMargin, first->OriginY + 15, first->Label);
}

void DrawLevel(const MenuItem* first) {
    if (HasTitle(first))
        DrawTitle(first);
    if (!ItemsOf(first))
        return;
    GadgetBox panel = PanelOf(first);
    DrawPanelFrame(panel);
    FillHalftone({panel.X, panel.Y + panel.Height - StripHeight, panel.Width, StripHeight}, MenuGrey, MenuWhite);
    FillHalftone({panel.X, panel.Y, panel.Width, StripHeight}, MenuGrey, MenuWhite);
    for (const MenuItem* item = ItemsOf(first); item; item = item->Next)
        DrawItem(*item);
}

void EraseLevels(const MenuItem* first) {
    Fill(MenuExtent(first), Transparent);
    for (const MenuItem* item = first; item; item = item->Next)
        if (item->Open && item->Submenu)
            EraseLevels(item->Submenu);
}

} // namespace

void StartMenuColours() {
    ColoursLoaded = false;
}

GadgetBox MenuExtent(const MenuItem* first) {
    GadgetBox panel = Grown(PanelOf(first), FrameWidth);
    if (!HasTitle(first))
        return panel;
    GadgetBox title = Grown(TitleBoxOf(first), FrameWidth);
    int top = title.Y + title.Height;
    return {panel.X, panel.Y, std::max(panel.Width, title.Width), top - panel.Y};
}

int LayOutMenu(int x, int y, MenuItem* first) {
    PlaceItems(x, y, first);
    Shift shift = ShiftOntoScreen(first);
    if (shift.X || shift.Y)
        PlaceItems(x + shift.X, y + shift.Y, first);
    DrawMenuPanel(first);
    return shift.X || shift.Y;
}

int OpenSubmenu(MenuItem* item) {
    constexpr int gap = 8;
    int originX = 0, originY = 0;
    item->Open = 1;
    ClearMenuFlags(item->Submenu);
    gl::getorigin(&originX, &originY);
    int x = item->X + item->W + gap, y = item->Y + 25;
    PlaceItems(x, y, item->Submenu);
    GadgetBox extent = MenuExtent(item->Submenu);
    int leftOfItem = item->X - gap - (extent.Width - 2 * FrameWidth);
    if (extent.X + extent.Width + originX > hres + 1 && leftOfItem - FrameWidth + originX >= 0)
        x = leftOfItem;
    return LayOutMenu(x, y, item->Submenu);
}

void DrawMenuItem(const MenuItem* item) {
    MenuDrawing drawing;
    DrawItem(*item);
}

void DrawMenuPanel(const MenuItem* first) {
    MenuDrawing drawing;
    DrawLevel(first);
}

void EraseMenuTree(const MenuItem* first) {
    MenuDrawing drawing;
    EraseLevels(first);
}
