#pragma once

#include <cstdint>

struct MenuEntry;
struct MenuItem;

// Menus while a button holds them open. Nothing else of the program reacts meanwhile.

/// Shows the menu at the pointer until the button, which is down, is released. Returns the Id of the item released on;
/// -1 when there was none.
int DoPopupMenu(const MenuEntry* menu, int button);
/// The same for the right button.
int DoPopup(const MenuEntry* menu);

/// Highlights the item under the pointer, opening and closing submenus; `highlighted` is the item highlighted so far,
/// or null. One step of a menu held open.
void TrackMenu(MenuItem* first, MenuItem*& highlighted);

/// A menu held open, which may be exchanged for another one meanwhile.
class MenuSession {
  public:
    MenuSession();
    ~MenuSession();
    MenuSession(const MenuSession&) = delete;
    MenuSession& operator=(const MenuSession&) = delete;

    /// Shows a menu, in place of the one shown before, with its panel's top-left corner at (x, y), in pixels of the
    /// current window.
    void Show(MenuItem* first, int x, int y);
    void Erase();
    /// Follows the pointer.
    void Track();

    MenuItem* Menu() const { return First; }

    /// The item under the pointer that can be chosen, or null.
    MenuItem* Chosen() const { return Highlighted; }

  private:
    MenuItem* First = nullptr;
    MenuItem* Highlighted = nullptr;
    /// A panel that had to be moved may lie under the pointer: nothing is chosen before the pointer has moved.
    bool AwaitsMotion = false;
    int StartX = 0, StartY = 0;
};
