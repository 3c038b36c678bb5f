#pragma once

#include "gooey/tool_window.h"

// Running the current texture along a strip of quadrilaterals; range, stretch and direction are set in a window.

/// Null while it is closed.
extern Window* StripTexture;
extern int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

/// Starts the tool on the strip that was selected last; without one the user is told what is missing.
void ApplyTextureToQstrip();
