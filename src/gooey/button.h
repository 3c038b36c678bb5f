#pragma once

#include "gooey/gadget_kind.h"

#include <cstdint>

struct Gadget;

/// Flags of AddButtons: how the buttons are laid out,
inline constexpr int ButtonsOfTextWidth = 0;
inline constexpr int ButtonsOfGivenWidth = 1;
inline constexpr int ButtonsOfGivenBoxes = 2;
/// and the options, added to it.
inline constexpr int ButtonsStacked = 4;
inline constexpr int ButtonsNarrow = 8;
inline constexpr int ButtonsSmallFont = 16;
inline constexpr int ButtonsAutoRepeat = 32;

/// The index of the button pressed, for the callback of its group; -1 - index when the callback is to draw the face of
/// a button without label.
extern int ButtonChoice;
/// The box of the button whose face is to be drawn.
extern int ButtonX, ButtonY, ButtonW, ButtonH;

/// What the buttons of a group share: the data of its head, which itself is no button.
struct ButtonGroup {
    std::int32_t Flags;
    std::int32_t Count;
    /// The variable that holds the index of the button shown as selected, or null.
    int* Selected;
    void (*Callback)();
    /// Negative offset from the window's right edge that the buttons' positions count from, or 0: they count from the
    /// left.
    std::int32_t RightAnchor;
    /// The leftmost x that the anchor may reach when the window is narrow.
    std::int32_t MinX;
};

/// One button.
struct Button {
    std::int32_t On;
    std::int32_t X, Y, W, H;
    std::int32_t TextX, TextY;
    std::int32_t Flags;
    std::int32_t Index;
    /// X and TextX relative to the anchor, in a right-anchored group.
    std::int32_t BaseX, BaseTextX;
    std::uint32_t Colour;
    /// Owned; null: the group's callback draws the face.
    char* Label;
    ButtonGroup* Group;
    /// Held down with the pointer on it: drawn pressed in, whoever draws.
    std::int32_t Pressed;
};

/// Adds a group of `count` buttons and returns its head. `callback` may be null, as may `selected`. `geometry` holds x,
/// y, w, h of each button for ButtonsOfGivenBoxes; for ButtonsStacked its first value, if given, is the step upwards. A
/// group with a negative x and a geometry table keeps its distance from the window's right edge. Buttons too wide for
/// `width` end the program with status 666.
Gadget* AddButtons(int x, int y, int width, int flags, int count, const char* const* labels, void (*callback)(),
                   int* selected, const int* geometry);

/// Keeps a right-anchored group from moving left of x when the window is narrow.
void SetButtonsMinX(Gadget* head, int x);

/// Moves a group that counts from the window's left edge: its first button's left edge goes to x.
void MoveButtons(Gadget* head, int x);

/// Leaves less room around the texts of a row of buttons as wide as their texts, or the usual room again; the first
/// stays where it is. Returns by how many pixels the row is now shorter than usual.
int SetButtonsNarrow(Gadget* head, bool narrow);
