#pragma once

// How models are shown: flags, 0 or 1, set from menus and preferences and kept with the defaults or in the model file.

extern int HideScene;      // hide scene branches that are not Visible
extern int HideSubObjects; // hide sub-objects that the structure editor does not show
