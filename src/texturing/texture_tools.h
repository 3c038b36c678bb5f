#pragma once

#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"

// What the tools that put textures on polygons in the views have in common: they start with a current texture, in
// object mode and with some polygons selected, follow the current texture and material while they run, and deselect
// everything when they end with Done.

/// Begins such a tool. `apply` gives the polygons the current texture and material with their coordinates: at once, and
/// whenever one of the two changes. 0 when the tool cannot start, of which the user has been told.
int BeginTextureTool(const Tool& tool, void (*apply)());
/// Runs apply() anew; the views are the caller's matter. Nothing when no such tool runs.
void ApplyAgain();

/// For Tool::Key: the undo key ends the tool as "Cancel" does.
int TextureToolKey(View* view, int character);
/// For Tool::HoldsWork: what is on the polygons is to be kept.
int TextureToolHoldsWork();
/// For Tool::Done and Tool::Leave.
void FinishTextureTool();
void LeaveTextureTool();

/// What their pop-up menus begin with.
inline constexpr MenuEntry TextureDoneEntry = {"Done", MenuEntrySeparated, 1, ' ', nullptr, nullptr};
