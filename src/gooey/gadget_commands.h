#pragma once

#include "gooey/gadget_kind.h"

#include <vector>

// The script commands that need gadgets: button, field, slider, menu, popup, report. They look their targets up in the
// live windows and then act through pointer and key events alone.

/// Makes the commands, and the positions of items, known to the script player.
void InstallGadgetCommands();

/// The window positions "item:LABEL" and "item:LABEL#2": the middle of an item or gadget with that label, the second of
/// them. For gl::ScriptPosition.
bool FindItemPosition(const std::string& word, int window, int& x, int& y, std::string& error);

/// An item of the menu that is open now.
struct MenuItemPlace {
    std::string Label;
    /// 0 for the menu itself, 1 for the submenu open beside it, and so on.
    int Level;
    /// In pixels of the window that the menu belongs to; it may reach beyond that window.
    GadgetBox Box;
};

/// Fills `items` with the items of the open menu and its open submenus, top to bottom, titles and headings left out;
/// returns 0 when no menu is open. Set by the menus.
extern int (*ListMenuItems)(std::vector<MenuItemPlace>& items);
