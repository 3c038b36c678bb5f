#pragma once

// Where the desktop window that shows the screen stood last, in the desktop's units; kept with the defaults.

extern int DesktopX, DesktopY, DesktopW, DesktopH;
/// Flags: there was a place; the window filled its desktop (the place is then the one that it had before).
extern int DesktopPlaceKnown, DesktopMaximised;

/// Before the first window opens: has the desktop window come back where it was.
void RestoreDesktopPlace();
/// Before the last window closes: takes the place down.
void RememberDesktopPlace();
