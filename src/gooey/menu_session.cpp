#include "gooey/menu_session.h"

#include "gooey/event_loop.h"
#include "gooey/gadget_commands.h"
#include "gooey/menu.h"
#include "gooey/menu_panel.h"
#include "gooey/pointer.h"

#include "platform/events.h"
#include "platform/system.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// A click may move so far and still be one.
constexpr int ClickMargin = 3;

const MenuSession* OpenSession = nullptr;

MenuItem* ItemUnderPointer(MenuItem* first) {
    for (MenuItem* item = first; item; item = item->Next) {
        if (item->Open)
            if (MenuItem* inner = ItemUnderPointer(item->Submenu))
                return inner;
        if (CanBeChosen(*item) && MouseInBox(item->X, item->Y, item->W, item->H))
            return item;
    }
    return nullptr;
}

/// Whether an item is in the level or in an open submenu under it.
bool IsShown(const MenuItem* first, const MenuItem* wanted) {
    for (const MenuItem* item = first; item; item = item->Next)
        if (item == wanted || (item->Open && IsShown(item->Submenu, wanted)))
            return true;
    return false;
}

bool Overlap(const GadgetBox& a, const GadgetBox& b) {
    return a.X < b.X + b.Width && b.X < a.X + a.Width && a.Y < b.Y + b.Height && b.Y < a.Y + a.Height;
}

/// Draws the levels that a box has bitten into, the innermost last.
void RepairMenu(const MenuItem* first, const GadgetBox& box) {
    if (Overlap(MenuExtent(first), box))
        DrawMenuPanel(first);
    for (const MenuItem* item = first; item; item = item->Next)
        if (item->Open)
            RepairMenu(item->Submenu, box);
}

void CloseSubmenus(MenuItem* item, MenuItem* root) {
    GadgetBox box = MenuExtent(item->Submenu);
    EraseMenuTree(item->Submenu);
    item->Open = 0;
    ClearMenuFlags(item->Submenu);
    DrawMenuItem(item);
    RepairMenu(root, box);
}

void AddItems(const MenuItem* first, int level, std::vector<MenuItemPlace>& items) {
    for (const MenuItem* item = first; item; item = item->Next)
        if (item->Kind != MenuEntryTitle && item->Kind != MenuEntryHeading)
            items.push_back({item->Label, level, {item->X, item->Y, item->W, item->H}});
    for (const MenuItem* item = first; item; item = item->Next)
        if (item->Open)
            AddItems(item->Submenu, level + 1, items);
}

int ListOpenItems(std::vector<MenuItemPlace>& items) {
    if (!OpenSession || !OpenSession->Menu())
        return 0;
    AddItems(OpenSession->Menu(), 0, items);
    return 1;
}

} // namespace

void TrackMenu(MenuItem* first, MenuItem*& highlighted) {
    MenuItem* item = ItemUnderPointer(first);
    if (item == highlighted)
        return;
    MenuItem* before = highlighted;
    highlighted = item;
    if (before)
        before->Highlighted = 0;
    if (item) {
        for (MenuItem* other = item->First; other; other = other->Next)
            if (other != item && other->Open)
                CloseSubmenus(other, first);
        item->Highlighted = 1;
    }
    if (before && IsShown(first, before))
        DrawMenuItem(before);
    if (!item)
        return;
    DrawMenuItem(item);
    if (item->Submenu && !item->Open)
        OpenSubmenu(item);
}

MenuSession::MenuSession() {
    OpenSession = this;
    ListMenuItems = ListOpenItems;
    StartMenuColours();
}

MenuSession::~MenuSession() {
    Erase();
    OpenSession = nullptr;
}

void MenuSession::Show(MenuItem* first, int x, int y) {
    Erase();
    First = first;
    if (!first)
        return;
    ClearMenuFlags(first);
    AwaitsMotion = LayOutMenu(x, y, first) != 0;
    StartX = MouseX;
    StartY = MouseY;
}

void MenuSession::Erase() {
    if (First)
        EraseMenuTree(First);
    First = Highlighted = nullptr;
}

void MenuSession::Track() {
    AwaitsMotion = AwaitsMotion && MouseX == StartX && MouseY == StartY;
    if (First && !AwaitsMotion)
        TrackMenu(First, Highlighted);
}

int MenuSession::NextPressStep() {
    gl::sginap(1);
    int device = 0;
    short value = 0;
    while (int state = KeepQueueHappy(device, value)) {
        if (state < 0 || (device == gl::KEYBD && value == EscapeCharacter))
            return -1;
        ReadMousePos();
        if ((device == gl::LEFTMOUSE || device == gl::RIGHTMOUSE) && value)
            return device;
    }
    ReadMousePos();
    return ModalLoopMustEnd() ? -1 : 0;
}

int DoPopupMenu(const MenuEntry* menu, int button) {
    MenuItem* first = BuildMenu(menu);
    int id = -1;
    {
        MenuSession session;
        const int startX = MouseX, startY = MouseY;
        session.Show(first, MouseX - 20, MouseY - 8);
        auto quick = [&] {
            return std::abs(MouseX - startX) <= ClickMargin && std::abs(MouseY - startY) <= ClickMargin;
        };
        if (!session.Follow(
                button, [&] { session.Track(); }, quick))
            session.Erase();
        if (session.Chosen())
            id = session.Chosen()->Id;
    }
    FreeMenu(first);
    return id;
}

int DoPopup(const MenuEntry* menu) {
    return DoPopupMenu(menu, gl::RIGHTMOUSE);
}
