#pragma once

struct Window;

// The window that shows how wide, long and high the current object is, and scales the object to a size that is typed.

/// Measures the current object's extents and chooses the unit that suits the largest. 0 when it has none.
int SussObjectDimensions();

/// Opens the window, or raises it; nothing when the object has no extent. The main window takes no input meanwhile.
void SetObjectDimensions();

/// The window; null while closed.
extern Window* DimensionBase;
/// Its last bottom-left corner, screen pixels, and a flag: there is one. Kept with the defaults.
extern int DimensionX, DimensionY, DimensionsOpened;
