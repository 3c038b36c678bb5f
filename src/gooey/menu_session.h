#pragma once

#include "gooey/modal.h"

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
    /// Follows the pointer until the button, which is down, is released, calling step() all the while. A click that
    /// shows nothing but the menu keeps it open until the next click or Escape: `quick()` tells at the release whether
    /// it was one. False when nothing is to be chosen.
    template <class Step, class Quick>
    bool Follow(int button, Step step, Quick quick);

    MenuItem* Menu() const { return First; }

    /// The item under the pointer that can be chosen, or null.
    MenuItem* Chosen() const { return Highlighted; }

  private:
    /// Waits for the press that ends a menu kept open, calling step(): the button, or 0 when it ends without a choice.
    template <class Step>
    static int NextPress(Step step);
    /// One step of that wait: -1 when it ends without a choice, a button that was pressed, or 0.
    static int NextPressStep();

    MenuItem* First = nullptr;
    MenuItem* Highlighted = nullptr;
    /// A panel that had to be moved may lie under the pointer: nothing is chosen before the pointer has moved.
    bool AwaitsMotion = false;
    int StartX = 0, StartY = 0;
};

template <class Step>
int MenuSession::NextPress(Step step) {
    for (;;) {
        const int button = NextPressStep();
        if (button)
            return button > 0 ? button : 0;
        step();
    }
}

template <class Step, class Quick>
bool MenuSession::Follow(int button, Step step, Quick quick) {
    bool released = TrackButton(button, step);
    if (released)
        step();
    if (released && !Chosen() && quick()) {
        button = NextPress(step);
        released = button && TrackButton(button, step);
        if (released)
            step();
    }
    return released;
}
