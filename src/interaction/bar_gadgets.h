#pragma once

struct Gadget;

// The gadgets that tool bars have in common, and where others go: to the right of the one before (GooeyRight), at these
// distances from the window's top edge.

inline constexpr int BarTextY = -23, BarButtonY = -31, BarCheckY = -27, BarIncDecY = -31;

/// A text of the message table, which the bar begins with.
Gadget* AddBarText(int message);
/// "Delete last", which types Backspace into the tool.
void AddDeleteLastButton();
