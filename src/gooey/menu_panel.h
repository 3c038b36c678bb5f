#pragma once

#include "gooey/gadget_kind.h"

struct MenuItem;

// The panel of one level of a menu: its layout, and its picture in the overlay, which leaves the window below
// untouched. Positions are pixels of the current window; panels may reach beyond it, but are kept on the screen.

/// Lays out a level with its panel's top-left corner at (x, y), asking every item's check function, and draws it. A
/// panel that would leave the screen is moved onto it; 1 is returned then.
int LayOutMenu(int x, int y, MenuItem* first);

/// Opens an item's submenu beside the item: to its right, or to its left where the screen ends. 1 when it had to lie
/// elsewhere.
int OpenSubmenu(MenuItem* item);

/// Draws one item, or the panel of a level with all its items, as last laid out.
void DrawMenuItem(const MenuItem* item);
void DrawMenuPanel(const MenuItem* first);

/// Takes a level and every open submenu under it off the overlay.
void EraseMenuTree(const MenuItem* first);

/// The rectangle that a level covers, frame and title included.
GadgetBox MenuExtent(const MenuItem* first);

/// Has the colours of the overlay loaded before the next panel is drawn; goes before every menu, since others draw
/// there too.
void StartMenuColours();
