#include "gooey/inc_dec.h"

#include "gooey/draw.h"
#include "gooey/misuse.h"
#include "gooey/window.h"

#include "platform/events.h"

#include <cstdlib>

namespace {

/// Clock ticks until a held button steps again for the first time, and from then on.
constexpr int FirstRepeat = 50, NextRepeats = 10;
constexpr int NarrowestIncDec = 53;

GadgetBox BoxOf(const IncDec& incDec) {
    int y = incDec.Y <= 0 ? incDec.Y + CurrentWindow->Height : incDec.Y;
    return {AnchoredX(incDec.X), y, incDec.Width, incDec.Height};
}

GadgetBox DecrementBox(const IncDec& incDec) {
    GadgetBox box = BoxOf(incDec);
    return {box.X, box.Y, IncDecButtonWidth, box.Height};
}

GadgetBox IncrementBox(const IncDec& incDec) {
    GadgetBox box = BoxOf(incDec);
    return {box.X + box.Width - IncDecButtonWidth, box.Y, IncDecButtonWidth, box.Height};
}

GadgetBox ValueBox(const IncDec& incDec) {
    GadgetBox box = BoxOf(incDec);
    return {box.X + IncDecButtonWidth, box.Y, box.Width - 2 * IncDecButtonWidth, box.Height};
}

std::string TextOf(const IncDec& incDec) {
    return incDec.Format ? incDec.Format(incDec.Arg) : std::to_string(*incDec.Value);
}

/// The sign is drawn rather than written, so that both are of one weight and centred in the button.
void DrawStepButton(const GadgetBox& box, std::uint32_t colour, int delta, bool pressed) {
    constexpr int armLength = 10, thickness = 2;
    DrawButtonFace(box, colour, pressed);
    SetColour(ButtonTextColour(false, pressed));
    int middleX = box.X + box.Width / 2, middleY = box.Y + box.Height / 2;
    DrawBox(middleX - armLength / 2, middleY - thickness / 2, armLength, thickness, ShadeFull);
    if (delta > 0)
        DrawBox(middleX - thickness / 2, middleY - armLength / 2, thickness, armLength, ShadeFull);
}

/// Changes the value and shows it. 0 when the owner took the gadget away.
int Step(Gadget* gadget, int delta) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    *incDec.Value += delta;
    if (incDec.Changed && !CallOwner(gadget, [&] { incDec.Changed(incDec.Arg, delta); }))
        return 0;
    RedrawIncDecValue(gadget);
    return 1;
}

void DescribeIncDec(const Gadget* gadget, GadgetDescription& description) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    description.Box = BoxOf(incDec);
    description.Text = TextOf(incDec);
    description.Items = {{"-", DecrementBox(incDec)}, {"+", IncrementBox(incDec)}};
}

int WheelIncDec(Gadget* gadget, int, int turnY) {
    if (!turnY || !MouseInGadgetBox(BoxOf(GadgetData<IncDec>(gadget))))
        return 0;
    int notches = WholeNotches(turnY);
    int delta = notches < 0 ? -1 : 1;
    for (int step = 0; step < std::abs(notches) && Step(gadget, delta); ++step) {
    }
    return 1;
}

constexpr GadgetKind IncDecKind = {"incdec", DescribeIncDec, WheelIncDec, nullptr};

} // namespace

Gadget* AddIncDec(int x, int y, int width, GadgetArg arg, const char* (*format)(GadgetArg),
                  void (*changed)(GadgetArg, int), int* value) {
    if (width < NarrowestIncDec)
        EndForMisuse("Error in AddIncDec - Width too small\n");
    Gadget* gadget = CreateGadget<IncDec>();
    GadgetData<IncDec>(gadget) = {x, y, width, IncDecHeight, arg, changed, format, value, GadgetColour()};
    gadget->DrawFn = DrawIncDec;
    gadget->ClickFn = CheckIncDecClick;
    gadget->Kind = &IncDecKind;
    GooeyRight = x + width + 8;
    return gadget;
}

void DrawIncDec(Gadget* gadget) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    DrawStepButton(DecrementBox(incDec), incDec.Colour, -1, false);
    DrawStepButton(IncrementBox(incDec), incDec.Colour, 1, false);
    DrawIncDecBox(incDec);
}

void DrawIncDecBox(const IncDec& incDec) {
    GadgetBox box = ValueBox(incDec);
    SetColour(incDec.Colour);
    // Its first and last column belong to the frames of the buttons.
    DrawLoweredBox(box.X + 1, box.Y, box.Width - 2, box.Height);
    DrawBox(box.X, box.Y, 1, box.Height, ShadeBlack);
    DrawBox(box.X + box.Width - 1, box.Y, 1, box.Height, ShadeBlack);
    ClipScope clip(box.X + 5, box.Y, box.Width - 10, box.Height);
    DrawCentred(FontOf(true), box.X, box.Y + 8, box.Width, TextOf(incDec).c_str(), White);
}

void RedrawIncDecValue(Gadget* gadget) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    DrawInFront(gadget, [&incDec] { DrawIncDecBox(incDec); });
}

void TrackIncDec(Gadget* gadget, const GadgetBox& button, int delta) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    auto show = [&](bool pressed) {
        DrawInFront(gadget, [&] { DrawStepButton(button, incDec.Colour, delta, pressed); });
    };
    RepeatClock clock(FirstRepeat, NextRepeats);
    int remains = 1;
    show(true);
    RepeatWhileHeld([&] {
        if (remains && clock.Due())
            remains = Step(gadget, delta);
    });
    if (remains)
        show(false);
}

int CheckIncDecClick(Gadget* gadget) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    if (GadgetBox box = DecrementBox(incDec); MouseInGadgetBox(box))
        TrackIncDec(gadget, box, -1);
    else if (GadgetBox box = IncrementBox(incDec); MouseInGadgetBox(box))
        TrackIncDec(gadget, box, 1);
    return 0;
}
