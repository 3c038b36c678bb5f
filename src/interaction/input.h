#pragma once

#include "store/view_record.h"

// What presses and keys in the model views come to: a running tool's hooks, else what views do by themselves.

/// The view that a command applies to.
extern View* KeyView;

void StartLeftModel(View* view);
/// The 3D view is always manipulated, whatever a tool wants.
void StartMiddleModel(View* view);
void StartRightModel(View* view);
/// Letters count as lower case. Tab waits for its release while it is held.
void CheckModelKey(View* view, int character);
/// Tab was pressed or released: it is typed at its release, unless a click came in between, which it was held for.
void CheckTab(View* view, int pressed);

/// A command by its code, on KeyView: a character, or a number from 257 up. Unknown codes do nothing.
void DoModelAction(int code);
/// Only what changes views and the display; for keys that a running tool does not use itself. Without a view (the
/// key came to a window of the tool) the first viewport's is meant.
void CheckSafeKeys(View* view, int code);
/// A choice from a pop-up menu of a view, and from the main window's menus, by item number.
void DealWithPopup(View* view, int item);
void DealWithPulldown(int item);

/// The commands themselves stand in the layer above; each is skipped when null.
struct InputSlots {
    /// Carries out a command on KeyView; 0 when the code is no command of this kind in this mode.
    int (*DoActionCommand)(int code) = nullptr;
    int (*DoSafeCommand)(int code) = nullptr;
    /// Carries out a menu item on KeyView.
    void (*MenuAction)(int item) = nullptr;
};

extern InputSlots TheInputSlots;
