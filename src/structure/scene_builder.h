#pragma once

#include "gooey/tool_window.h"

// The window that shows the scene as a tree, in which branches are selected, hidden, and put in order.

extern const ToolWindow SceneBuilderWindow;

/// The window; null while closed. Its last place and size, screen pixels, and a flag: there is one. Kept with the
/// defaults, as is whether it was open when the program ended.
extern Window* SceneBuilder;
extern int SceneBuilderX, SceneBuilderY, SceneBuilderW, SceneBuilderH, SceneBuilderOpened;
extern int SceneBuilderOpen;

void OpenSceneBuilder();
/// Has it drawn again.
void DirtySceneBuilder();
/// What an entry of its menus does.
void DealWithSceneBuilderMenu(int choice);
