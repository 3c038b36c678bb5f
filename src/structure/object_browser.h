#pragma once

#include "gooey/tool_window.h"

// The window that lists the objects of the model by name; the one that is chosen becomes current.

extern const ToolWindow ObjectBrowserWindow;

/// Its last place and height, screen pixels, and a flag: there is one. Kept with the defaults.
extern int ObjectBrowserX, ObjectBrowserY, ObjectBrowserH, ObjectBrowserOpened;
/// Flag, kept with the defaults: it opens with the program.
extern int ObjectBrowserOpen;

void OpenObjectBrowser();
