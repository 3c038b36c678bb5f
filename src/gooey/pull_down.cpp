#include "gooey/pull_down.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/misuse.h"
#include "gooey/pointer.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/drawing.h"
#include "platform/events.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int FirstTitleX = 12;
constexpr int TitlePadding = 24;
/// From the top of the window to the baseline of the labels, and to the top-left corner of an open menu.
constexpr int LabelBelowTop = 24, MenuBelowTop = 39;
constexpr int ShadeBar = 8;
/// Titles that move together keep so much between their labels.
constexpr int LeastPadding = 8;
/// Right of the last title, and right of the end of a bracket.
constexpr int BarMargin = 24, ChopMargin = 16;

/// The window's own width while a bracket is drawn; 0 at other times.
int WidthBehindChop = 0;

int RealWidth() {
    return WidthBehindChop ? WidthBehindChop : CurrentWindow->Width;
}

int TitleCount(const PullDownBar& bar) {
    int count = 0;
    for (const MenuTitle* title = bar.Titles; title; title = title->Next)
        ++count;
    return count;
}

int LabelWidths(const PullDownBar& bar, int font) {
    int width = 0;
    for (const MenuTitle* title = bar.Titles; title; title = title->Next)
        width += TextWidthIn(font, title->Label);
    return width;
}

/// How the titles of a bar are set: their font, and what lies between the labels.
struct Setting {
    int Font, Padding;
    /// 0 when even the narrowest letters are too wide.
    int Fits;
};

Setting SettingOf(const PullDownBar& bar) {
    if (!bar.Reserve)
        return {MenuFont, TitlePadding, 1};
    const int room = RealWidth() - bar.Reserve - ChopMargin - BarMargin - FirstTitleX;
    const int count = std::max(1, TitleCount(bar));
    Setting setting = {};
    for (int form = 0; form <= NarrowestForm && !setting.Fits; ++form) {
        setting.Font = FormOfFont(MenuFont, form);
        const int space = room - LabelWidths(bar, setting.Font);
        setting.Padding = std::clamp(space / count, LeastPadding, TitlePadding);
        setting.Fits = space >= count * LeastPadding;
    }
    return setting;
}

/// So that the box of an open menu covers no letter of the titles beside it.
int TitleMarginOf(const Setting& setting) {
    return std::max(1, MenuTitleMargin - (TitlePadding - setting.Padding) / 2);
}

void PlaceTitles(const PullDownBar& bar) {
    const Setting setting = SettingOf(bar);
    int x = FirstTitleX;
    for (MenuTitle* title = bar.Titles; title; title = title->Next) {
        title->X = x;
        title->Y = CurrentWindow->Height - PullDownBarHeight;
        MenuItem* label = title->Items;
        label->LabelWidth = TextWidthIn(setting.Font, title->Label);
        label->TitleFont = setting.Font;
        label->TitleMargin = TitleMarginOf(setting);
        title->Width = label->LabelWidth + setting.Padding;
        x += title->Width;
    }
}

void DrawBar(Gadget* gadget) {
    const PullDownBar& bar = GadgetData<PullDownBar>(gadget);
    PlaceTitles(bar);
    const Setting setting = SettingOf(bar);
    SetColour(White);
    DrawBox(0, CurrentWindow->Height - PullDownBarHeight, CurrentWindow->Width, PullDownBarHeight, ShadeBar);
    gl::cpack(Black);
    for (const MenuTitle* title = bar.Titles; title; title = title->Next)
        DrawTextIn(setting.Font, title->X + setting.Padding / 2, CurrentWindow->Height - LabelBelowTop, title->Label);
}

MenuTitle* TitleUnderPointer(const PullDownBar& bar) {
    int height = CurrentWindow->Height;
    if (MouseY <= height - PullDownBarHeight || MouseY >= height)
        return nullptr;
    for (MenuTitle* title = bar.Titles; title; title = title->Next)
        if (title->X <= MouseX && MouseX < title->X + title->Width)
            return title;
    return nullptr;
}

int ClickBar(Gadget* gadget) {
    const PullDownBar& bar = GadgetData<PullDownBar>(gadget);
    MenuTitle* open = TitleUnderPointer(bar);
    if (!open)
        return 0;
    int id = -1;
    {
        MenuSession session;
        const Setting setting = SettingOf(bar);
        const int labelToBox = setting.Padding / 2 - TitleMarginOf(setting);
        auto show = [&] {
            if (bar.BuildsAtOpening) {
                FreeMenu(open->Items);
                open->Items = BuildMenu(open->Table);
                PlaceTitles(bar);
            }
            session.Show(open->Items, open->X + labelToBox, CurrentWindow->Height - MenuBelowTop);
        };
        auto follow = [&] {
            MenuTitle* title = TitleUnderPointer(bar);
            if (title && title != open) {
                open = title;
                show();
            }
            session.Track();
        };
        show();
        if (!session.Follow(gl::LEFTMOUSE, follow, [&] { return TitleUnderPointer(bar) == open; }))
            session.Erase();
        if (session.Chosen())
            id = session.Chosen()->Id;
    }
    if (id >= 0 && bar.Callback)
        CallOwner(gadget, [&] { bar.Callback(id); });
    return 1;
}

void FreeBar(Gadget* gadget) {
    MenuTitle* next = GadgetData<PullDownBar>(gadget).Titles;
    while (MenuTitle* title = next) {
        next = title->Next;
        FreeMenu(title->Items);
        FreeOwnedText(title->Label);
        Free(title);
    }
}

void DescribeBar(const Gadget* gadget, GadgetDescription& description) {
    PlaceTitles(GadgetData<PullDownBar>(gadget));
    int bottom = CurrentWindow->Height - PullDownBarHeight;
    description.Box = {0, bottom, 0, PullDownBarHeight};
    for (const MenuTitle* title = GadgetData<PullDownBar>(gadget).Titles; title; title = title->Next) {
        description.Items.push_back({title->Label, {title->X, bottom, title->Width, PullDownBarHeight}});
        description.Box.Width = title->X + title->Width;
    }
}

constexpr GadgetKind PullDownKind = {"menu", DescribeBar, nullptr, nullptr};

MenuTitle* BuildTitle(const MenuEntry* menu, int x) {
    MenuItem* items = BuildMenu(menu);
    if (!items || items->Kind != MenuEntryTitle)
        EndForMisuse("Menu entry has no title\a\n");
    MenuTitle* title = static_cast<MenuTitle*>(AllocateZeros(sizeof(MenuTitle)));
    title->Items = items;
    title->Table = menu;
    title->X = x;
    title->Y = CurrentWindow->Height - PullDownBarHeight;
    title->Width = items->LabelWidth + TitlePadding;
    title->Label = CopyOfString(items->Label);
    return title;
}

/// What the two ends of a bracket share: the data of its start.
struct MenuChop {
    std::int32_t ChopX;
    /// The bar inside, or null.
    Gadget* Bar;
};

/// The bracket that has been begun.
Gadget* ChopBegun = nullptr;

int ChopXOf(const MenuChop& chop) {
    return chop.ChopX - (chop.Bar ? PullDownBarShift(chop.Bar) : 0);
}

void DrawChopStart(Gadget* gadget) {
    int end = ChopXOf(GadgetData<MenuChop>(gadget));
    WidthBehindChop = CurrentWindow->Width;
    CurrentWindow->Width = end;
}

void DrawChopEnd(Gadget* gadget) {
    if (!WidthBehindChop)
        return;
    CurrentWindow->Width = std::exchange(WidthBehindChop, 0);
    gl::cpack(BackgroundOf(CurrentWindow));
    gl::rectfi(ChopXOf(*GadgetData<MenuChop*>(gadget)), CurrentWindow->Height - PullDownBarHeight,
               CurrentWindow->Width - 1, CurrentWindow->Height - 1);
}

} // namespace

void BuildMenusAtOpening(Gadget* bar) {
    GadgetData<PullDownBar>(bar).BuildsAtOpening = 1;
}

Gadget* AddPullDownMenu(const MenuEntry* const* menus, void (*callback)(int id)) {
    Gadget* gadget = CreateGadget<PullDownBar>();
    PullDownBar& bar = GadgetData<PullDownBar>(gadget);
    bar.Callback = callback;
    gadget->DrawFn = DrawBar;
    gadget->ClickFn = ClickBar;
    gadget->FreeFn = FreeBar;
    gadget->Kind = &PullDownKind;
    int x = FirstTitleX;
    MenuTitle** link = &bar.Titles;
    for (; *menus; ++menus) {
        *link = BuildTitle(*menus, x);
        x += (*link)->Width;
        link = &(*link)->Next;
    }
    GooeyRight = x + BarMargin;
    if (ChopBegun)
        GadgetData<MenuChop>(ChopBegun).Bar = gadget;
    return gadget;
}

Gadget* AddMenuChopStart() {
    ChopBegun = CreateGadget<MenuChop>();
    GadgetData<MenuChop>(ChopBegun).ChopX = CurrentWindow->Width;
    ChopBegun->DrawFn = DrawChopStart;
    return ChopBegun;
}

Gadget* AddMenuChopEnd() {
    if (!ChopBegun)
        EndForMisuse("Menu chop has no start\a\n");
    MenuChop& chop = GadgetData<MenuChop>(std::exchange(ChopBegun, nullptr));
    chop.ChopX = GooeyRight;
    GooeyRight += ChopMargin;
    Gadget* gadget = CreateGadget<MenuChop*>();
    GadgetData<MenuChop*>(gadget) = &chop;
    gadget->DrawFn = DrawChopEnd;
    return gadget;
}

void ReserveRightOfBar(Gadget* bar, int reserve) {
    GadgetData<PullDownBar>(bar).Reserve = reserve;
}

int PullDownBarFits(const Gadget* bar) {
    return SettingOf(GadgetData<PullDownBar>(bar)).Font == MenuFont;
}

int PullDownBarShift(const Gadget* bar) {
    const PullDownBar& titles = GadgetData<PullDownBar>(bar);
    const Setting setting = SettingOf(titles);
    return LabelWidths(titles, MenuFont) - LabelWidths(titles, setting.Font) +
           TitleCount(titles) * (TitlePadding - setting.Padding);
}
