#pragma once

#include "gooey/gadget_skeleton.h"

inline constexpr int IncDecHeight = 26;
/// Of each of its two buttons.
inline constexpr int IncDecButtonWidth = 26;

struct IncDec {
    std::int32_t X, Y, Width, Height;
    GadgetArg Arg;
    void (*Changed)(GadgetArg arg, int delta);
    const char* (*Format)(GadgetArg arg);
    int* Value;
    std::uint32_t Colour;
    /// The step of the button that is held down, -1 or 1; 0: none is.
    std::int32_t Held;
};

/// Adds a value between a "-" and a "+" button. A step changes `value` by delta, -1 or 1, then calls changed(arg,
/// delta), which may correct it. format(arg) returns the text to show; null shows the integer. y of 0 or less counts
/// from the top edge. A click is not consumed: the window's event function sees it too. A width under 53 ends the
/// program with status 666.
Gadget* AddIncDec(int x, int y, int width, GadgetArg arg, const char* (*format)(GadgetArg arg),
                  void (*changed)(GadgetArg arg, int delta), int* value);

/// The whole gadget; the box between the buttons with its value; that in what the user sees.
void DrawIncDec(Gadget* gadget);
void DrawIncDecBox(const IncDec& incDec);
void RedrawIncDecValue(Gadget* gadget);
/// Steps by delta while the left button is held down.
void TrackIncDec(Gadget* gadget, int delta);
int CheckIncDecClick(Gadget* gadget);
