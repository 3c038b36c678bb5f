#pragma once

struct Window;

// The ruler gizmo: a window that offers one value on a graduated scale, by dragging and by typing, to a running tool.

/// What the ruler tells its owner. The value is in the owner's unit; all run in the window that was current when the
/// ruler opened.
using RulerChange = void (*)(double value);
using RulerEnd = void (*)();

/// Opens the ruler with a label for its value. change() is called with every step of a drag and with every value typed;
/// released(), which may be null, at the end of a drag; and once, when the window closes, either done() or cancel(). The
/// side windows are disabled meanwhile. When it is open already it is only raised, and the callbacks are not taken.
void OpenRulerGizmo(const char* label, RulerChange change, RulerEnd released, RulerEnd cancel, RulerEnd done,
                    double initialValue);
/// Closes the ruler with Done (accept non-zero) or Cancel. Nothing while it is closed.
void CloseRulerWindow(int accept);

/// The value shown: 0 to 5, or 0 to 10 by RulerSize, when it was dragged; any number when it was typed.
double RulerValue();

/// The window; null while closed.
extern Window* RulerGizmo;
