#pragma once

#include "gooey/tool_window.h"

#include <cstdint>

// The window in which the current material is changed: colours, shininess, transparency and name.

/// Null while it is closed.
extern Window* MaterialEditor;
extern const ToolWindow MaterialEditorWindow;
extern int MateditX, MateditY, MaterialEditorOpened;
/// Flag, kept with the defaults: the three sliders of a colour move together.
extern int MatEditGang;

/// Opens it beside the palette, or raises it when it is open.
void OpenMaterialEditor();

// The rest does nothing while it is closed.
/// The current material is another one: shows it, and has undo and reset lead back to how it is now.
void RefreshMaterialEditor();
/// The current material has other values or another name: shows them.
void ShowMaterialInEditor();
