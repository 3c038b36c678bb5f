#pragma once

#include "gooey/tool_window.h"

// The window that shows the sub-objects and levels of detail of the current object, and changes them.

extern const ToolWindow StructureEditorWindow;

/// Its last place, screen pixels, and a flag: there is one. Kept with the defaults.
extern int StructX, StructY, StructureEditorOpened;
/// Flag, kept with the defaults: it opens with the program.
extern int StructureOpen;

void OpenStructureEditor();
