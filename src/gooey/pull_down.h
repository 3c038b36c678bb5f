#pragma once

#include <cstdint>

struct Gadget;
struct MenuEntry;
struct MenuItem;

/// The height of a bar, at the top of its window.
inline constexpr int PullDownBarHeight = 35;

/// One menu of a bar.
struct MenuTitle {
    MenuTitle* Next;
    MenuItem* Items;
    /// The bottom-left corner of its box in the bar.
    std::int32_t X, Y;
    std::int32_t Width;
    char* Label;
};

struct PullDownBar {
    void (*Callback)(int id);
    MenuTitle* Titles;
};

/// Adds a bar along the top of the current window, with a null-terminated array of menu tables, each beginning with a
/// title (one that does not ends the program with status 666). `callback`, which may be null, gets the Id of each item
/// chosen. The menus are built now, their check functions asked again at each opening.
Gadget* AddPullDownMenu(const MenuEntry* const* menus, void (*callback)(int id));

/// Bracket a bar so that it covers the strip only up to the x where the bracket ends; the rest is cleared to the
/// window's background. Both return the gadgets that do it; they are shown and hidden together with the bar.
Gadget* AddMenuChopStart();
Gadget* AddMenuChopEnd();
