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
    /// What reports call it where it shows no label; may be null.
    const char* Name;
};

/// What a slider is made of; see AddSlider.
struct SliderSpec {
    int X = 0, Y = 0, Width = 0;
    /// Positions go from 0 to this, a pixel each.
    int Range = 0;
    int Flags = 0;
    int Position = 0;
    const char* Label = nullptr;
    /// See Slider::Name; not copied.
    const char* Name = nullptr;
    /// For the functions below, each of which may be null.
    GadgetArg Arg = nullptr;
    void (*Pressed)(GadgetArg arg, int position) = nullptr;
    void (*Moved)(GadgetArg arg, int oldPosition, int newPosition) = nullptr;
    void (*Released)(GadgetArg arg, int position) = nullptr;
    /// The colour of the part under the thumb.
    std::uint32_t (*Shade)(GadgetArg arg) = nullptr;
    /// Draws the value under the slider.
    void (*Print)(int x, int y, int width, int value, std::uint32_t colour) = nullptr;
};

/// Adds a vertical slider.
Gadget* AddSlider(const SliderSpec& spec);

/// Moves the thumb, within the range, without calling back; optionally shows it at once.
void ConfigureSlider(Gadget* gadget, int position, int redraw);

/// Functions for `print`: the integer, centred in the width.
void PrintSlide(int x, int y, int width, int value, std::uint32_t colour);
void PrintSlideSmall(int x, int y, int width, int value, std::uint32_t colour);
