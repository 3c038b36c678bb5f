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
    const MenuEntry* Table;
    /// The bottom-left corner of its box in the bar.
    std::int32_t X, Y;
    std::int32_t Width;
    char* Label;
};

struct PullDownBar {
    void (*Callback)(int id);
    MenuTitle* Titles;
    /// Pixels at the window's right edge that the titles leave free when that is possible, by moving closer together.
    std::int32_t Reserve;
    /// See BuildMenusAtOpening.
    std::int32_t BuildsAtOpening;
};

/// Adds a bar along the top of the current window, with a null-terminated array of menu tables, each beginning with a
/// title (one that does not ends the program with status 666). `callback`, which may be null, gets the Id of each item
/// chosen. The menus are built now, their check functions asked again at each opening.
Gadget* AddPullDownMenu(const MenuEntry* const* menus, void (*callback)(int id));

/// Has the menus of a bar built anew at each opening: entries come and go, and tables change, while it is shown.
void BuildMenusAtOpening(Gadget* bar);

/// Bracket a bar so that it covers the strip only up to the x where the bracket ends; the rest is cleared to the
/// window's background. Both return the gadgets that do it; they are shown and hidden together with the bar.
Gadget* AddMenuChopStart();
Gadget* AddMenuChopEnd();

/// Moves the titles of a bar, and the end of its bracket, closer together in a window that is too narrow for them and
/// for `reserve` pixels right of the bracket, and at last makes their letters narrower; in a wide one they lie as they
/// were added. 0: they never move.
void ReserveRightOfBar(Gadget* bar, int reserve);
/// 1 while no letters need to be narrower.
int PullDownBarFits(const Gadget* bar);
/// How far the bracket of a bar ends left of where it ends in a wide window; as the window is now.
int PullDownBarShift(const Gadget* bar);
