#include "gooey/numeric_panel.h"

#include "base/slots.h"
#include "gooey/event_loop.h"
#include "gooey/manual.h"
#include "gooey/text_filters.h"
#include "platform/system.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

NumericFields& FieldsOf(const Gadget* gadget) {
    return GadgetData<TextInput>(gadget).Arg.As<NumericFields>();
}

int CountOf(const NumericFields& fields) {
    return fields.Panel ? static_cast<int>(fields.Panel->Inputs.size()) : 0;
}

int NumberOf(const NumericFields& fields, const Gadget* gadget) {
    return static_cast<int>(std::find(fields.Inputs, fields.Inputs + CountOf(fields), gadget) - fields.Inputs);
}

bool TextChanged(const NumericFields& fields, int number) {
    return std::strcmp(fields.Texts[number], fields.Panel->Text(number)) != 0;
}

/// The number that a key leads to from another one.
int NumberAfter(const NumericFields& fields, int number) {
    const int next = number + 1, count = CountOf(fields);
    switch (fields.Panel->ReturnNow ? fields.Panel->ReturnNow() : fields.Panel->Return) {
    case AfterReturn::Next:
        return std::min(next, count - 1);
    case AfterReturn::NextRoundTheEnd:
        return next % count;
    case AfterReturn::Stay:
        return number;
    default:
        return -1;
    }
}

int FilterNumber(int& character, int position, const char* text) {
    NumericFields& fields = FieldsOf(TextCaller);
    const NumericPanel& panel = *fields.Panel;
    if (position < 0) {
        const int number = NumberOf(fields, TextCaller);
        const int target = std::clamp(number + (character == UpCharacter ? -1 : 1), 0, CountOf(fields) - 1);
        if (!TakeNumber(fields, number))
            return 1;
        if (target != number && fields.Inputs[target]->Visible)
            ActivateNumber(fields, target);
        return 1;
    }
    if (character == '?' && panel.ManualPage) {
        OpenManual(panel.ManualPage);
        return 0;
    }
    return (panel.Filter ? panel.Filter : FPFilter)(character, position, text);
}

void NumberCalls() {
    NumericFields& fields = FieldsOf(TextCaller);
    const int number = NumberOf(fields, TextCaller);
    if (!TextReturnReal) {
        double value;
        if (fields.Panel->TakesWhileTyping && TextIsActive(TextCaller)) {
            if (ReadNumber(fields.Texts[number], value))
                fields.Panel->Apply(number, value);
        } else if (fields.Panel->TakesWhenLeft) {
            TakeNumber(fields, number);
        }
        return;
    }
    // Taking a number may close the window.
    Gadget* const caller = TextCaller;
    const bool taken = TakeNumber(fields, number);
    if (!WindowOf(caller))
        return;
    const int next = taken ? NumberAfter(fields, number) : number;
    if (next >= 0)
        ActivateNumber(fields, fields.Inputs[next]->Visible ? next : number);
}

} // namespace

void AddNumericPanel(const NumericPanel& panel, NumericFields& fields) {
    fields = {};
    fields.Panel = &panel;
    const int told =
        (panel.TakesWhileTyping ? TextReportsChanges : 0) | (panel.TakesWhenLeft ? TextReportsDeactivation : 0);
    for (int number = 0; number < CountOf(fields); ++number) {
        const NumberInput& place = panel.Inputs[number];
        fields.Inputs[number] = AddTextInput({.X = place.X,
                                              .Y = place.Y,
                                              .Width = place.Width,
                                              .Flags = place.Flags | told,
                                              .Label = place.Label,
                                              .Text = panel.Text(number),
                                              .Buffer = fields.Texts[number],
                                              .Size = std::min(panel.TextSize, NumberTextSize),
                                              .Filter = FilterNumber,
                                              .Callback = NumberCalls,
                                              .Arg = &fields});
    }
}

void ShowNumbers(NumericFields& fields, bool all, bool inFront) {
    const int active = ActiveNumber(fields);
    for (int number = 0; number < CountOf(fields); ++number)
        if (all || number != active)
            ShowNumber(fields, number, inFront);
}

void ShowNumber(NumericFields& fields, int number, bool inFront) {
    if (!TextChanged(fields, number))
        return;
    ChangeText(fields.Inputs[number], fields.Panel->Text(number));
    if (inFront)
        RedrawGadgetInFront(fields.Inputs[number]);
}

int ActiveNumber(const NumericFields& fields) {
    for (int number = 0; number < CountOf(fields); ++number)
        if (TextIsActive(fields.Inputs[number]))
            return number;
    return -1;
}

void ActivateNumber(NumericFields& fields, int number) {
    ActivateText(fields.Inputs[number], 1);
}

bool TakeNumber(NumericFields& fields, int number) {
    const NumericPanel& panel = *fields.Panel;
    if (!TextChanged(fields, number) && !(panel.TakesUnchanged && TextReturnReal))
        return true;
    double value;
    if (!ReadNumber(fields.Texts[number], value)) {
        if (panel.Unreadable)
            panel.Unreadable(number);
        else
            ShowNumber(fields, number, true);
        return false;
    }
    if (panel.Apply(number, value))
        return true;
    gl::ringbell();
    return false;
}

bool ReadNumber(const char* text, double& value) {
    char* end;
    value = std::strtod(text, &end);
    return end != text && end[std::strspn(end, " \t")] == '\0' && std::isfinite(value);
}
