#pragma once

#include "gooey/gadget_skeleton.h"

inline constexpr int SliderSmallFont = 1;
inline constexpr int SliderThumbHeight = 16;

struct Slider {
    std::int32_t X, Y, Width;
    /// Its range and the thumb's height.
    std::int32_t Height;
    std::int32_t Flags;
    /// Of the thumb above the bottom: 0 to the range, in pixels.
    std::int32_t Position;
    void (*Pressed)(GadgetArg arg, int position);
    void (*Moved)(GadgetArg arg, int oldPosition, int newPosition);
    void (*Released)(GadgetArg arg, int position);
    std::uint32_t (*Shade)(GadgetArg arg);
    void (*Print)(int x, int y, int width, int value, std::uint32_t colour);
    GadgetArg Arg;
    char* Label;
    std::uint32_t Colour;
};

/// Adds a vertical slider with positions from 0 to `range`. Any function and the label may be null. `shade` returns the
/// colour of the part under the thumb; `print` draws the value under the slider.
Gadget* AddSlider(int x, int y, int width, int range, int flags, int position, void (*pressed)(GadgetArg, int),
                  void (*moved)(GadgetArg, int, int), void (*released)(GadgetArg, int),
                  std::uint32_t (*shade)(GadgetArg), void (*print)(int, int, int, int, std::uint32_t), GadgetArg arg,
                  const char* label);

/// Moves the thumb, within the range, without calling back; optionally shows it at once.
void ConfigureSlider(Gadget* gadget, int position, int redraw);

/// Functions for `print`: the integer, centred in the width.
void PrintSlide(int x, int y, int width, int value, std::uint32_t colour);
void PrintSlideSmall(int x, int y, int width, int value, std::uint32_t colour);
