#pragma once

#include "gooey/menu.h"

// The menus that views and running tools offer, beside the main window's bar. Item numbers are those of the bar.

/// The View menu, which is also the pop-up menu of the model views.
extern const MenuEntry ViewMenu[];
/// The Settings menu: tick boxes that show the display flags.
extern const MenuEntry SettingsMenu[];

/// Item numbers below this are a tool's own; those from here on mean the same in every menu.
inline constexpr int FirstSharedItem = 11;

/// What the pop-up menus of most tools end with.
inline constexpr MenuEntry GridControlEntry = {"Grid control", MenuEntryItem, 103, 'G', nullptr, nullptr};
inline constexpr MenuEntry MaterialsEntry = {"Materials", MenuEntryItem, 104, 'M', nullptr, nullptr};
inline constexpr MenuEntry ViewEntry = {"View", MenuEntryItem, 0, 0, ViewMenu, nullptr};
inline constexpr MenuEntry LastSettingsEntry = {"Settings", MenuEntryLast, 0, 0, SettingsMenu, nullptr};

/// The key of a table's entry with this item number; 0 when it has none. Submenus are not searched.
int KeyOfItem(const MenuEntry* table, int item);
