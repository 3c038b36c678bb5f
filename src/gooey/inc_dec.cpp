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

/// The button that steps by -1 or 1.
GadgetBox StepBox(const IncDec& incDec, int delta) {
    GadgetBox box = BoxOf(incDec);
    int x = delta < 0 ? box.X : box.X + box.Width - IncDecButtonWidth;
    return {x, box.Y, IncDecButtonWidth, box.Height};
}

GadgetBox ValueBox(const IncDec& incDec) {
    GadgetBox box = BoxOf(incDec);
    return {box.X + IncDecButtonWidth, box.Y, box.Width - 2 * IncDecButtonWidth, box.Height};
}

std::string TextOf(const IncDec& incDec) {
    return incDec.Format ? incDec.Format(incDec.Arg) : std::to_string(*incDec.Value);
}

/// The sign is drawn rather than written, so that both are of one weight and centred in the button.
void DrawStepButton(const IncDec& incDec, int delta) {
    constexpr int armLength = 10, thickness = 2;
    GadgetBox box = StepBox(incDec, delta);
    bool pressed = incDec.Held == delta;
    DrawButtonFace(box, incDec.Colour, pressed);
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
    description.Items = {{"-", StepBox(incDec, -1)}, {"+", StepBox(incDec, 1)}};
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

constexpr GadgetKind IncDecKind = {
    .Name = "incdec", .Describe = DescribeIncDec, .Wheel = WheelIncDec, .ThumbY = nullptr, .Steps = true};

} // namespace

Gadget* AddIncDec(int x, int y, int width, GadgetArg arg, const char* (*format)(GadgetArg),
                  void (*changed)(GadgetArg, int), int* value) {
    if (width < NarrowestIncDec)
        EndForMisuse("Error in AddIncDec - Width too small\n");
    Gadget* gadget = CreateGadget<IncDec>();
    GadgetData<IncDec>(gadget) = {x, y, width, IncDecHeight, arg, changed, format, value, GadgetColour(), 0};
    gadget->DrawFn = DrawIncDec;
    gadget->ClickFn = CheckIncDecClick;
    gadget->Kind = &IncDecKind;
    GooeyRight = x + width + 8;
    return gadget;
}

void DrawIncDec(Gadget* gadget) {
    const IncDec& incDec = GadgetData<IncDec>(gadget);
    for (int delta : {-1, 1})
        DrawStepButton(incDec, delta);
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

void TrackIncDec(Gadget* gadget, int delta) {
    IncDec& incDec = GadgetData<IncDec>(gadget);
    auto show = [&](int held) {
        incDec.Held = held;
        DrawInFront(gadget, [&] { DrawStepButton(incDec, delta); });
    };
    RepeatClock clock(FirstRepeat, NextRepeats);
    int remains = 1;
    show(delta);
    RepeatWhileHeld([&] {
        if (remains && clock.Due())
            remains = Step(gadget, delta);
    });
    show(0);
}

int CheckIncDecClick(Gadget* gadget) {
    for (int delta : {-1, 1})
        if (MouseInGadgetBox(StepBox(GadgetData<IncDec>(gadget), delta))) {
            TrackIncDec(gadget, delta);
            break;
        }
    return 0;
}
