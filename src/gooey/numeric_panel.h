#pragma once

#include "gooey/text_input.h"

#include <span>

// Numbers that are typed into a window: a constant table says where each lies and what becomes of it. Return takes a
// number and goes on to the next, the arrow keys up and down take it and walk.

/// Where one number is typed; see TextInputSpec.
struct NumberInput {
    int X = 0, Y = 0, Width = 0;
    int Flags = TextSmallFont;
    const char* Label = nullptr;
};

/// Where Return leads when it has taken a number.
enum class AfterReturn { Next, NextRoundTheEnd, Stay, Leave };

inline constexpr int MostNumbersInPanel = 16;
/// Bytes of a number's text, the terminator included.
inline constexpr int NumberTextSize = 64;

/// The constant table of a panel. Numbers count from 0 in the order of Inputs.
struct NumericPanel {
    std::span<const NumberInput> Inputs;
    /// The present value as it is shown.
    const char* (*Text)(int number) = nullptr;
    /// Takes a value that was typed and, but for TakesUnchanged, differs in its text from the present one. False
    /// refuses it: the bell rings, and the number stays active.
    bool (*Apply)(int number, double value) = nullptr;
    /// What was typed is no finite number. Null: the present value is shown again.
    void (*Unreadable)(int number) = nullptr;
    /// Decides about characters; the arrow keys never come here.
    TextFilter Filter = nullptr;
    AfterReturn Return = AfterReturn::Next;
    /// Decides instead of Return, where that changes while the window is open; null: Return holds.
    AfterReturn (*ReturnNow)() = nullptr;
    /// Whether Return applies a number again that is there already: of numbers that say how far to go on.
    bool TakesUnchanged = false;
    /// Whether a number that is left by a click or by Tab is taken as well.
    bool TakesWhenLeft = false;
    /// Whether Apply follows every change of a readable text at once.
    bool TakesWhileTyping = false;
    /// Opened by "?"; null: none.
    const char* ManualPage = nullptr;
    /// Bytes of a number's text, up to NumberTextSize.
    int TextSize = 32;
};

/// The gadgets of a panel in an open window and what is being typed there; kept by the window's owner.
struct NumericFields {
    const NumericPanel* Panel = nullptr;
    Gadget* Inputs[MostNumbersInPanel] = {};
    char Texts[MostNumbersInPanel][NumberTextSize] = {};
};

/// Adds the inputs to the current window, with the present values. `panel` and `fields` must live as long as it.
void AddNumericPanel(const NumericPanel& panel, NumericFields& fields);

/// Shows the present values; not in the number that is being typed, unless `all`. With `inFront` at once.
void ShowNumbers(NumericFields& fields, bool all, bool inFront);
void ShowNumber(NumericFields& fields, int number, bool inFront);

/// The number that is being typed; -1: none.
int ActiveNumber(const NumericFields& fields);
/// Puts the cursor into a number, showing it at once.
void ActivateNumber(NumericFields& fields, int number);

/// Takes what is typed in a number, as Return does, without going on to another. False when there was no readable
/// number, or it was refused.
bool TakeNumber(NumericFields& fields, int number);

/// Reads a whole text as a finite number, in any usual notation, blanks around it allowed.
bool ReadNumber(const char* text, double& value);
