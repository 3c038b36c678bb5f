#include "tools/sweep_options.h"

#include "geometry/numbers.h"
#include "gooey/check_box.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/message_table.h"
#include "gooey/numeric_panel.h"
#include "gooey/text_filters.h"
#include "gooey/window.h"
#include "platform/system.h"
#include "tools/sweep.h"
#include "views/grid.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace {

constexpr int GridSnapLabel = 155, SidewaysLabel = 156, RepeatLabel = 157, ApplyTextureLabel = 185, SquareLabel = 196;
constexpr float LeastFactor = 0.01F;
constexpr int SquareX = 106, SidewaysX = 140;
constexpr int RepeatNumber = 0, StretchNumber = 1;

/// The numbers of a window, which tables of the panel refer to.
struct FactorInputs {
    const SweepOptions* Options;
    NumberInput Inputs[2];
    NumericPanel Panel;
    NumericFields Fields;
};

/// By the window's handle.
std::map<Window**, FactorInputs>& Known() {
    static std::map<Window**, FactorInputs> known;
    return known;
}

FactorInputs& InputsOfWindow() {
    for (auto& [handle, inputs] : Known())
        if (*handle == CurrentWindow)
            return inputs;
    return Known().begin()->second; // never: the panel is in one of them
}

void TellChange(const SweepOptions& options) {
    SweepChanged(*options.Swept);
    options.Changed();
}

const SweepOptions& OptionsOf(GadgetArg arg) {
    return arg.As<const SweepOptions>();
}

GadgetArg ArgOf(const SweepOptions& options) {
    return const_cast<SweepOptions*>(&options);
}

void FlagChanged(GadgetArg arg) {
    TellChange(OptionsOf(arg));
}

const char* SquareText(GadgetArg arg) {
    static char text[32];
    double size = GridSquare(OptionsOf(arg).Swept->GridIndex);
    const char* unit = ScaleNumber(&size);
    std::snprintf(text, sizeof text, "%d %s", static_cast<int>(std::lround(size)), unit);
    return text;
}

void SquareChanged(GadgetArg arg, int) {
    int& index = OptionsOf(arg).Swept->GridIndex;
    index = std::clamp(index, 0, MostSweepGridIndex);
    TellChange(OptionsOf(arg));
}

float& Factor(const SweepOptions& options, int number) {
    return number == RepeatNumber ? options.Swept->Repeat : options.Swept->Stretch;
}

const char* FactorText(int number) {
    static char text[32];
    const SweepOptions& options = *InputsOfWindow().Options;
    std::snprintf(text, sizeof text, "%.*f", options.Decimals, static_cast<double>(Factor(options, number)));
    return text;
}

bool ApplyFactor(int number, double value) {
    FactorInputs& inputs = InputsOfWindow();
    Factor(*inputs.Options, number) = std::max(static_cast<float>(value), LeastFactor);
    TellChange(*inputs.Options);
    ShowNumber(inputs.Fields, number, true);
    return true;
}

void UnreadableFactor(int) {
    gl::ringbell();
}

} // namespace

void AddSquareOptions(const SweepOptions& options, int x, int y) {
    constexpr int squareWidth = 110;
    AddCheckBox(x, y + 4, 0, CheckSmallFont, nullptr, msg(GridSnapLabel), nullptr, options.Snap);
    AddText(x + SquareX, y + 8, msg(SquareLabel), 0);
    AddIncDec(GooeyRight, y, squareWidth, ArgOf(options), SquareText, SquareChanged, &options.Swept->GridIndex);
}

void AddTextureOptions(const SweepOptions& options, int x, int y, int width) {
    AddSweepCheck(options, x, y, ApplyTextureLabel, &options.Swept->ApplyTexture);
    AddSweepCheck(options, x + SidewaysX, y, SidewaysLabel, &options.Swept->Sideways);
    FactorInputs& numbers = Known()[options.Handle];
    numbers.Options = &options;
    numbers.Inputs[RepeatNumber] = {.X = x, .Y = y - SweepOptionRow, .Width = width, .Label = msg(RepeatLabel)};
    numbers.Inputs[StretchNumber] = {
        .X = x, .Y = y - 2 * SweepOptionRow, .Width = width, .Label = msg(options.StretchLabel)};
    numbers.Panel = {.Inputs = numbers.Inputs,
                     .Text = FactorText,
                     .Apply = ApplyFactor,
                     .Unreadable = UnreadableFactor,
                     .Filter = PositiveFPFilter,
                     .Return = AfterReturn::NextRoundTheEnd,
                     .TakesWhenLeft = true};
    AddNumericPanel(numbers.Panel, numbers.Fields);
}

void AddSweepCheck(const SweepOptions& options, int x, int y, int message, int* flag) {
    AddCheckBox(x, y + 4, 0, CheckSmallFont, ArgOf(options), msg(message), FlagChanged, flag);
}
