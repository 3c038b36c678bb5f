#include "gooey/menu.h"

#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/misuse.h"

#include "base/memory.h"

#include <string>

namespace {

struct NamedKey {
    int Character;
    const char* Name;
};

constexpr NamedKey NamedKeys[] = {
    {BackspaceCharacter, "Backspace"},
    {TabCharacter, "Tab"},
    {ReturnCharacter, "Enter"},
    {EscapeCharacter, "Esc"},
    {' ', "SPC"},
    {InsertCharacter, "Insert"},
    {PageUpCharacter, "PgUp"},
    {PageDownCharacter, "PgDown"},
    {HomeCharacter, "Home"},
    {EndCharacter, "End"},
    {DoubleClickShortcut, "[2xClick]"},
    {ShiftLeftMouseShortcut, "[Shift+Leftmouse]"},
    {ShiftMiddleMouseShortcut, "[Shift+Middle]"},
};

std::string ShortcutName(int shortcut) {
    if (shortcut < 0)
        return std::string("Alt+") + static_cast<char>(-shortcut);
    for (const NamedKey& key : NamedKeys)
        if (key.Character == shortcut)
            return key.Name;
    if (shortcut >= 33 && shortcut <= 127)
        return std::string(1, static_cast<char>(shortcut));
    return "????";
}

MenuItem* BuildItem(const MenuEntry& entry) {
    MenuItem* item = static_cast<MenuItem*>(AllocateZeros(sizeof(MenuItem)));
    item->Label = CopyOfString(entry.Label);
    item->LabelWidth = MenuTextWidth(entry.Label);
    item->TitleFont = MenuFont;
    item->TitleMargin = MenuTitleMargin;
    item->Id = entry.Id;
    item->Kind = entry.Kind;
    item->Check = entry.Check;
    if (entry.Shortcut) {
        item->ShortcutText = CopyOfString(ShortcutName(entry.Shortcut).c_str());
        item->ShortcutWidth = MenuTextWidth(item->ShortcutText);
    }
    if (entry.Submenu)
        item->Submenu = BuildMenu(entry.Submenu);
    return item;
}

} // namespace

std::int32_t SimpleMenuCheck(int flag) {
    return flag ? MenuHasTickBox | MenuTicked : MenuHasTickBox;
}

std::int32_t ListMenuCheck(int a, int b) {
    return a == b ? MenuHasTickBox | MenuTicked : 0;
}

MenuItem* BuildMenu(const MenuEntry* table) {
    MenuItem* first = nullptr;
    MenuItem** link = &first;
    for (const MenuEntry* entry = table;; ++entry) {
        bool hidden = entry->Check && entry->Check() & MenuHidden;
        if (!hidden) {
            *link = BuildItem(*entry);
            (*link)->First = first;
            link = &(*link)->Next;
        }
        if (entry->Kind == MenuEntryLast)
            return first;
    }
}

void FreeMenu(MenuItem* first) {
    while (MenuItem* item = first) {
        first = item->Next;
        FreeMenu(item->Submenu);
        FreeOwnedText(item->Label);
        FreeOwnedText(item->ShortcutText);
        Free(item);
    }
}

void ClearMenuFlags(MenuItem* first) {
    for (MenuItem* item = first; item; item = item->Next) {
        item->Open = item->Highlighted = 0;
        ClearMenuFlags(item->Submenu);
    }
}

bool CanBeChosen(const MenuItem& item) {
    return !item.Disabled && item.Kind != MenuEntryTitle && item.Kind != MenuEntryHeading;
}
