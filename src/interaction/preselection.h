#pragma once

// What lies under the resting pointer, before anything is clicked: the vertex, polygon or object of the scene that a
// click would select has a faint outline, and the status line's right end shows where the pointer meets the grid.

/// Whether this is shown: a preference, off where nobody looks at a display unless the user asks for it.
extern int ShowPointedAt;
/// The preference, as the defaults file keeps it: it hides instead of showing.
extern int HidePointedAt;

/// Sets ShowPointedAt for the screen in use by what the user prefers.
void InitPreselection();

/// Looks at the place of the pointer once it has come to rest; for every pass of the main loop, `idle` when it found
/// nothing else to do.
void UpdatePreselection(int idle);

/// Takes the outline away, before the view or what it shows changes.
void HidePreselection();
