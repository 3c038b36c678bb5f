#pragma once

#include "gooey/menu.h"

/// Calls visit(entry) for every entry of a menu and its submenus.
template <class Visit>
void ForEveryEntry(const MenuEntry* table, const Visit& visit) {
    for (const MenuEntry* entry = table;; ++entry) {
        visit(*entry);
        if (entry->Submenu)
            ForEveryEntry(entry->Submenu, visit);
        if (entry->Kind == MenuEntryLast)
            return;
    }
}

/// The same for all menus of a bar.
template <class Visit>
void ForEveryEntryOf(const MenuEntry* const* bar, const Visit& visit) {
    for (; *bar; ++bar)
        ForEveryEntry(*bar, visit);
}
