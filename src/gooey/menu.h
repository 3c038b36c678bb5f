#pragma once

#include <cstdint>

// Menus: the tables that describe them, and the trees of items that are built from a table to be shown.

/// What an entry of a menu table is.
enum MenuKind {
    MenuEntryItem = 0,
    /// The first entry of a menu that has a title box.
    MenuEntryTitle = 1,
    /// An item, and the end of the table.
    MenuEntryLast = 2,
    /// An item with a separator under it.
    MenuEntrySeparated = 3,
    /// A line between groups of items that cannot be chosen.
    MenuEntryHeading = 4,
};

/// Bits that an entry's check function returns.
enum MenuCheck {
    /// The entry is left out; asked when the menu is built only.
    MenuHidden = 1,
    /// Greyed, cannot be chosen.
    MenuDisabled = 2,
    MenuHasTickBox = 4,
    MenuTicked = 8,
};

/// One line of a menu table; a table is a static array that ends with an entry of kind MenuEntryLast.
struct MenuEntry {
    const char* Label;
    std::int32_t Kind;
    /// What is returned when the item is chosen; 0 for titles, headings and entries that only open a submenu.
    std::int16_t Id;
    /// The key shown at the right: 0 none, a character of a KEYBD event, or minus the letter that goes with Alt.
    std::int16_t Shortcut;
    /// The table of the menu that opens beside the item, or null.
    const MenuEntry* Submenu;
    /// Returns MenuCheck bits each time the menu is laid out; null: none.
    std::int32_t (*Check)();
};

/// Shortcuts that are mouse actions, which no key stands for.
inline constexpr std::int16_t DoubleClickShortcut = 150;
inline constexpr std::int16_t ShiftLeftMouseShortcut = 151;
inline constexpr std::int16_t ShiftMiddleMouseShortcut = 152;

/// For check functions: a tick box that shows the flag; a ticked box for the chosen one of several values, none for the
/// others.
std::int32_t SimpleMenuCheck(int flag);
std::int32_t ListMenuCheck(int a, int b);

/// What the box of a menu's title leaves left of the label, unless it is made narrower.
inline constexpr int MenuTitleMargin = 8;

/// An entry of a menu that has been built. Rectangles are in pixels of the window that the menu belongs to.
struct MenuItem {
    /// The first item of the submenu, or null.
    MenuItem* Submenu;
    /// The next and the first item of the same level.
    MenuItem* Next;
    MenuItem* First;
    char* Label;
    /// Null without a shortcut.
    char* ShortcutText;
    std::int32_t LabelX, LabelWidth;
    /// Of a title: the font of its label, and what the box leaves left of it.
    std::int32_t TitleFont, TitleMargin;
    std::int32_t ShortcutX, ShortcutWidth;
    std::int32_t Id;
    /// Its submenu is shown.
    std::int32_t Open;
    std::int32_t Highlighted;
    std::int32_t Disabled;
    /// Its level has a column of tick boxes.
    std::int32_t TickColumn;
    std::int32_t Kind;
    /// What Check returned last.
    std::int32_t CheckFlags;
    std::int32_t X, Y, W, H;
    /// On every item: the top-left corner that its level was laid out at last.
    std::int32_t OriginX, OriginY;
    std::int32_t (*Check)();
};

/// Builds the items of a table, hidden entries left out, with their submenus; null when none remains. Released with
/// FreeMenu.
MenuItem* BuildMenu(const MenuEntry* table);
void FreeMenu(MenuItem* first);

/// Closes all submenus of a level and takes away its highlights, in the submenus as well.
void ClearMenuFlags(MenuItem* first);

/// Whether the item can be highlighted and chosen.
bool CanBeChosen(const MenuItem& item);
