#pragma once

#include "gooey/gadget_skeleton.h"

inline constexpr int CheckSmallFont = 1;
/// A black frame and label, for windows with a light background.
inline constexpr int CheckBlack = 2;

struct CheckBox {
    std::int32_t X, Y;
    std::int32_t Flags;
    GadgetArg Arg;
    char* Label;
    void (*Callback)(GadgetArg arg);
    int* Value;
    std::int32_t BoxSize;
    /// From X to the label.
    std::int32_t TextOffset;
    std::int32_t Crazy;
    std::uint32_t TickColour;
};

/// Adds a check box for the flag `value`; a click toggles the flag, then calls callback(arg), which may be null. With a
/// width other than 0, box and label are centred in it.
Gadget* AddCheckBox(int x, int y, int width, int flags, GadgetArg arg, const char* label,
                    void (*callback)(GadgetArg arg), int* value);
