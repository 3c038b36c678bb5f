#pragma once

struct Window;

/// The tool that joins all vertices of the current object that lie close together. The window sets how close; what will
/// be joined shows as selected. Nothing for an object without vertices.
void AmalgamateVertices();

/// The window; null while closed.
extern Window* AmalgamateWindow;
/// Its last bottom-left corner, screen pixels, and a flag: there is one. Kept with the defaults.
extern int AmalgamateX, AmalgamateY, AmalgamateOpened;

/// "Minimum gap:", in thousandths of the object's radius.
extern double AmalgamateGap;

/// Of the current object, while the tool runs: selects the vertices that have others within the gap, and chains each
/// with those that it hangs together with through NextInGroup, by ascending x, of equal ones by their order in the
/// object.
void FindCloseVertices();
/// Joins every chain in its first vertex that is selected, at the mean place of it and those after it; vertices of the
/// chain that are not selected are left where they are. Takes the undo snapshot.
void DoAmalgamate();
