#pragma once

struct ToolWindow;
struct Window;

// The window in which vertices are entered on a digitising tablet, from a drawing with two views of an object.

extern const ToolWindow TabletWindow;
/// While it is open, null otherwise.
extern Window* TabletBase;
/// Where it was last; kept with the defaults.
extern int TabletX, TabletY, TabletOpened;

/// Flag: actions make sounds; kept with the defaults.
extern int SoundEffects;
/// Flags, one of them set: vertices are entered one by one, or in rows that share a coordinate. Kept with the defaults.
extern int EnterMethodA, EnterMethodB;

inline constexpr int MostDigitisedPoints = 3;

/// Opens the window: with 0, for the user to align a drawing and to enter vertices of the current object; with 1 to 3,
/// for that many points, which the callback then gets (3 doubles each, tablet units), or null when the user gives up.
/// More end the program.
void DigitiseVertices(int count, void (*callback)(const double (*points)[3]));

struct TabletSlots {
    /// Keeps the alignment for later runs; skipped when null.
    void (*WriteDefaults)() = nullptr;
};

extern TabletSlots TheTabletSlots;
