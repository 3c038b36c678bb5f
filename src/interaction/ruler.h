#pragma once

struct Window;

// The ruler gizmo: a window that offers one value on a graduated scale, by dragging and by typing, to a running tool.

/// What the ruler tells its owner. The value is in the owner's unit; all run in the window that was current when the
/// ruler opened.
using RulerChange = void (*)(double value);
using RulerEnd = void (*)();

/// Opens the ruler with a label for its value. change() is called with every step of a drag and with every value typed;
/// released(), which may be null, at the end of a drag; and once, at its end, either done() or cancel(). The side
/// windows are disabled meanwhile. When it is open already it is only raised, and the callbacks are not taken.
void OpenRulerGizmo(const char* label, RulerChange change, RulerEnd released, RulerEnd cancel, RulerEnd done,
                    double initialValue);
/// Ends the ruler with Done (accept non-zero) or Cancel: the owner is told at once, and a ruler may be opened again.
/// Nothing while it is closed.
void CloseRulerWindow(int accept);
/// 1 until its owner has been told of the end.
int RulerGizmoIsOpen();

/// The value: 0 to 5, or 0 to 10 by RulerSize, when it was dragged; any that is not negative when it was typed.
double RulerValue();

/// The window; null while closed.
extern Window* RulerGizmo;
/// Its last bottom-left corner, screen pixels, a flag: there is one, and which of the two sizes it shows (0: up to 5;
/// 1: up to 10). Kept with the defaults.
extern int RulerX, RulerY, RulerGizmoOpened, RulerSize;
