#include "gooey/label.h"

#include "gooey/redraw.h"

namespace {

void DrawLabel(Gadget* gadget) {
    const Label& label = GadgetData<Label>(gadget);
    FontOf(!label.BigFont).Draw(AnchoredX(label.X), AnchoredY(label.Y), label.Text, label.Colour);
}

void FreeLabel(Gadget* gadget) {
    FreeOwnedText(GadgetData<Label>(gadget).Text);
}

void DescribeLabel(const Gadget* gadget, GadgetDescription& description) {
    const Label& label = GadgetData<Label>(gadget);
    const GadgetFont& font = FontOf(!label.BigFont);
    description.Label = label.Text;
    description.Box = {AnchoredX(label.X), AnchoredY(label.Y) - font.Descent, font.Width(label.Text),
                       font.TextHeight + font.Descent};
}

constexpr GadgetKind LabelKind = {"label", DescribeLabel, nullptr, nullptr};

Gadget* AddLabel(int x, int y, const char* text, int bigFont, std::uint32_t colour) {
    Gadget* gadget = CreateGadget<Label>();
    Label& label = GadgetData<Label>(gadget);
    label.X = x;
    label.Y = y;
    label.Text = OwnedText(text);
    label.BigFont = bigFont;
    label.Colour = colour;
    gadget->DrawFn = DrawLabel;
    gadget->FreeFn = FreeLabel;
    gadget->Kind = &LabelKind;
    GooeyRight = x + FontOf(!bigFont).Width(label.Text) + 8;
    return gadget;
}

void DrawBackdrop(Gadget*) {
    ClearWindow();
}

} // namespace

Gadget* AddText(int x, int y, const char* text, int bigFont) {
    return AddLabel(x, y, text, bigFont, White);
}

Gadget* AddDimText(int x, int y, const char* text, int bigFont) {
    return AddLabel(x, y, text, bigFont, DimGrey);
}

void SetText(Gadget* gadget, const char* text) {
    Label& label = GadgetData<Label>(gadget);
    char* replaced = label.Text;
    label.Text = OwnedText(text);
    FreeOwnedText(replaced);
}

Gadget* AddBackdrop() {
    return AddGadget(DrawBackdrop, nullptr, 0);
}
