#pragma once

struct Sweep;
struct ToolWindow;
struct Window;

// The window in which a profile is turned about an axis into a solid.

extern const ToolWindow RevolveWindow;
/// While it is open, null otherwise.
extern Window* Revolve;
/// Where it was last; kept with the defaults.
extern int RevolveX, RevolveY, RevolveW, RevolveH, RevolveOpened;

/// What is being revolved, kept from one use to the next.
extern Sweep& RevolveSweep;

/// Opens it.
void DoRevolve();

/// What it depends on, the material say, has changed.
void RemakeRevolve();

/// Gives back what it keeps: the main window closes.
void FreeRevolve();
