#pragma once

#include "gooey/tool_window.h"

// The window in which objects and branches of another file are picked to be merged into the open one.

extern const ToolWindow MergeWindow;

/// The window; null while closed. Its last place and size, screen pixels, and a flag: there is one. Kept with the
/// defaults.
extern Window* Merge;
extern int MergeX, MergeY, MergeW, MergeH, MergeOpened;

/// Opens it on the merge file of the store, which holds the file of that name; an open one is raised. Closing it
/// empties the merge file.
Window* OpenMergeWindow(const char* name);
