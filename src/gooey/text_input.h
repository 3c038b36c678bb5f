#pragma once

#include "gooey/gadget_skeleton.h"

inline constexpr int TextSmallFont = 1;
inline constexpr int TextLabelAbove = 2;
/// Redraw the whole window after each change, instead of the input alone.
inline constexpr int TextRedrawsWindow = 4;
/// Call back after every change,
inline constexpr int TextReportsChanges = 8;
/// and when the input is deactivated.
inline constexpr int TextReportsDeactivation = 16;

/// 1 when an input's callback runs because Return was pressed, 0 for a change or a deactivation.
extern int TextReturnReal;

/// Decides about a character typed at `position` (in characters): non-zero accepts it, and it may be changed.
/// Characters beyond ASCII come as TextCharacter. With position -1 UpCharacter and DownCharacter are offered: non-zero
/// when the filter has dealt with the key.
using TextFilter = int (*)(int& character, int position, const char* text);

struct TextInput {
    std::int32_t LabelX, LabelY;
    std::int32_t BoxX, BoxY, BoxWidth;
    std::uint32_t Colour;
    std::int32_t Flags;
    /// The cursor's place in characters; -1: not active.
    std::int32_t Cursor;
    /// Pixels of text scrolled out at the left.
    std::int32_t Scroll;
    /// Bytes of the buffer, the terminator included.
    std::int32_t Size;
    char* Label;
    char* Buffer;
    TextFilter Filter;
    void (*Callback)();
    /// The other end of the selection, in characters; equal to Cursor: nothing is selected.
    std::int32_t Anchor;
    /// The window's edges that all places count from.
    EdgeAnchor Edges;
    GadgetArg Arg;
};

/// What a text input is made of; see AddTextInput.
struct TextInputSpec {
    int X = 0, Y = 0;
    /// Includes the label; of 0 or less it is the box's own, negated.
    int Width = 0;
    int Flags = 0;
    const char* Label = nullptr;
    /// What it contains at first; null: nothing.
    const char* Text = nullptr;
    /// The caller's, UTF-8, of Size bytes; holds the content from now on.
    char* Buffer = nullptr;
    int Size = 0;
    /// Null: letters, digits and blanks are accepted.
    TextFilter Filter = nullptr;
    /// Runs on Return and as the flags say; may be null.
    void (*Callback)() = nullptr;
    /// For filter and callback, which find it in TextCaller.
    GadgetArg Arg = nullptr;
};

/// Adds a text input. A box of negative width ends the program with status 666.
Gadget* AddTextInput(const TextInputSpec& spec);

/// The input whose filter or callback runs; null when none does.
extern Gadget* TextCaller;

/// Puts the cursor at the end of the text, optionally showing it at once. The input gets the window's keys.
void ActivateText(Gadget* gadget, int redraw);
/// The same with all of the text selected, so that typing replaces it.
void ActivateWholeText(Gadget* gadget, int redraw);
/// 1 when all of a text that is not empty is selected.
int WholeTextIsSelected(const Gadget* gadget);
void DeactivateText(Gadget* gadget);
int TextIsActive(const Gadget* gadget);

/// Replaces the text; null empties it. One too long is cut, with a message on the standard output stream.
void ChangeText(Gadget* gadget, const char* text);

/// The height that an input with these flags takes.
int InputHeight(int flags);
