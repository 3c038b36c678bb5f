#include "gooey/check_box.h"

#include "gooey/draw.h"
#include "gooey/window.h"

#include "platform/drawing.h"

namespace {

const GadgetFont& FontFor(const CheckBox& check) {
    return FontOf((check.Flags & CheckSmallFont) != 0);
}

GadgetBox SquareOf(const CheckBox& check) {
    return {AnchoredX(check.X), AnchoredY(check.Y), check.BoxSize, check.BoxSize};
}

/// The tick, or what is left when it goes, one pixel fatter on each side than DrawTick.
void DrawFatTick(const GadgetBox& square, std::uint32_t edge, std::uint32_t inside) {
    static constexpr int offsets[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    gl::cpack(edge);
    for (const auto& offset : offsets)
        DrawTick(square.X + offset[0], square.Y + offset[1], square.Width);
    gl::cpack(inside);
    DrawTick(square.X, square.Y, square.Width);
}

void DrawSquare(const CheckBox& check) {
    GadgetBox square = SquareOf(check);
    std::uint32_t background = BackgroundOf(CurrentWindow);
    DrawFatTick(square, background, background);
    SetColour(White);
    DrawFrame(square.X, square.Y, square.Width, square.Height, check.Flags & CheckBlack ? ShadeBlack : ShadeFull);
    if (*check.Value)
        DrawFatTick(square, Black, check.TickColour);
}

void DrawCheckBox(Gadget* gadget) {
    const CheckBox& check = GadgetData<CheckBox>(gadget);
    DrawSquare(check);
    FontFor(check).Draw(AnchoredX(check.X) + check.TextOffset, AnchoredY(check.Y), check.Label,
                        check.Flags & CheckBlack ? Black : White);
}

void Toggle(Gadget* gadget) {
    const CheckBox& check = GadgetData<CheckBox>(gadget);
    *check.Value = !*check.Value;
    int remains = 1;
    if (check.Callback)
        remains = CallOwner(gadget, [&check] { check.Callback(check.Arg); });
    if (remains)
        DrawInFront(gadget, [&check] { DrawSquare(check); });
}

int ClickCheckBox(Gadget* gadget) {
    const CheckBox& check = GadgetData<CheckBox>(gadget);
    if (!MouseInGadgetBox(SquareOf(check)))
        return 0;
    Toggle(gadget);
    WaitForLeftRelease();
    return 1;
}

void FreeCheckBox(Gadget* gadget) {
    FreeOwnedText(GadgetData<CheckBox>(gadget).Label);
}

void DescribeCheckBox(const Gadget* gadget, GadgetDescription& description) {
    const CheckBox& check = GadgetData<CheckBox>(gadget);
    description.Label = check.Label;
    description.Target = SquareOf(check);
    description.Box = description.Target;
    description.Box.Width = check.TextOffset + FontFor(check).Width(check.Label);
    description.On = *check.Value != 0;
}

constexpr GadgetKind CheckBoxKind = {
    .Name = "check", .Describe = DescribeCheckBox, .Wheel = nullptr, .ThumbY = nullptr, .Press = Toggle};

} // namespace

Gadget* AddCheckBox(int x, int y, int width, int flags, GadgetArg arg, const char* label, void (*callback)(GadgetArg),
                    int* value) {
    Gadget* gadget = CreateGadget<CheckBox>();
    CheckBox& check = GadgetData<CheckBox>(gadget);
    check.Flags = flags;
    const GadgetFont& font = FontFor(check);
    check.BoxSize = font.BoxSize;
    check.TextOffset = check.BoxSize * 4 / 3;
    check.Label = OwnedText(label);
    int labelWidth = font.Width(check.Label);
    if (width)
        x += (width - check.TextOffset - labelWidth) / 2;
    check.X = x;
    check.Y = y;
    check.Arg = arg;
    check.Callback = callback;
    check.Value = value;
    check.Crazy = CurrentWindow->Crazy;
    check.TickColour = check.Crazy ? RandomColour() : Red;
    gadget->DrawFn = DrawCheckBox;
    gadget->ClickFn = ClickCheckBox;
    gadget->FreeFn = FreeCheckBox;
    gadget->Kind = &CheckBoxKind;
    GooeyRight = x + check.TextOffset + labelWidth + 8;
    return gadget;
}
