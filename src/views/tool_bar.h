#pragma once

#include "views/hooks.h"

// The strip of gadgets that takes the place of the main window's menus while a tool runs: the tool's own gadgets from
// the left, then "Done", "Cancel" and "Help" or two of them at the right.

/// Sets the main window's gadgets aside and calls build() (null: no gadgets of the tool's own) with the main window
/// current; then adds the buttons, whose index choice() finds in ButtonChoice; null adds none. One tool bar at a time:
/// a second is reported on the standard error stream and ignored.
void GenerateToolBar(void (*build)(), void (*choice)());
/// With "Cancel" and "Help" only.
void GenerateCancelToolBar(void (*build)(), void (*choice)());
/// With "Done" and "Help" only.
void GenerateDoneToolBar(void (*build)(), void (*choice)());

/// Lays the buttons out for the window's width, before each drawing; the main window is current.
void PlaceToolBarButtons();

/// What most choice functions do: passes the button on as a key: Done 32, Cancel 149, Help 63.
void BasicButtonChoice(KeyHook keyHandler);

/// Has the tool bar removed by the dispatcher, by a GOOEY_SPECIAL event of this value; safe from its own buttons. The
/// next tool may generate its bar at once.
void ClearToolBar();
inline constexpr short ToolBarClearEvent = 0;
/// That event has come.
void HandleToolBarEvent();
/// Removes it now and brings the main window's gadgets back.
void DoToolClear();

int ToolBarActive();
