#pragma once

struct Sweep;
struct ToolWindow;
struct View;
struct Window;

// The tool that carries a profile, drawn in a window of its own, along a path drawn in the views.

extern const ToolWindow SweeperWindow;
extern Window* Sweeper;
/// Where its window was last; kept with the defaults.
extern int SweeperX, SweeperY, SweeperW, SweeperH, SweeperOpened;

/// What is being swept, kept from one use to the next.
extern Sweep& VolumeSweep;

/// Starts the tool. It runs until Done, which adds the surface to the object, or Cancel, or until its window is closed.
void DoVolumeSweep();

/// Shows the surface and the path: an overlay of the views.
void DrawNewSweep(View* view);

/// What it depends on, the material say, has changed.
void RemakeSweep();

/// Gives back what the tool keeps: the main window closes.
void FreeSweeper();
