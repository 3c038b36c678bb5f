#include "gooey/slider.h"

#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/drawing.h"

#include <algorithm>

namespace {

/// From the track's bottom to the printed value, and from its top to the label, by font.
struct SliderSpacing {
    int ToValue, ToLabel;
};

SliderSpacing SpacingOf(const Slider& slider) {
    return slider.Flags & SliderSmallFont ? SliderSpacing{14 + 4, 7} : SliderSpacing{22 + 4, 8};
}

const GadgetFont& FontFor(const Slider& slider) {
    return FontOf((slider.Flags & SliderSmallFont) != 0);
}

int RangeOf(const Slider& slider) {
    return slider.Height - SliderThumbHeight;
}

GadgetBox TrackOf(const Slider& slider) {
    return {AnchoredX(slider.X), AnchoredY(slider.Y), slider.Width, slider.Height};
}

GadgetBox ThumbOf(const Slider& slider) {
    GadgetBox track = TrackOf(slider);
    return {track.X, track.Y + slider.Position, track.Width, SliderThumbHeight};
}

/// The thumb and what lies above and below it in the track.
void DrawTrack(const Slider& slider) {
    GadgetBox track = TrackOf(slider), thumb = ThumbOf(slider);
    SetColour(slider.Colour);
    DrawRaisedBox(thumb.X, thumb.Y, thumb.Width, thumb.Height);
    DrawBox(track.X, thumb.Y + thumb.Height, track.Width, RangeOf(slider) - slider.Position, ShadeNeutral);
    int shade = ShadeNeutral;
    if (slider.Shade) {
        SetColour(slider.Shade(slider.Arg));
        shade = RangeOf(slider) ? slider.Position * 15 / RangeOf(slider) : 0;
    }
    DrawBox(track.X, track.Y, track.Width, slider.Position, shade);
}

void PrintValue(const Slider& slider) {
    if (!slider.Print)
        return;
    GadgetBox track = TrackOf(slider);
    slider.Print(track.X - 4, track.Y - SpacingOf(slider).ToValue, track.Width + 8, slider.Position, slider.Colour);
}

void DrawSlider(Gadget* gadget) {
    const Slider& slider = GadgetData<Slider>(gadget);
    GadgetBox track = TrackOf(slider);
    if (slider.Label)
        DrawCentred(FontFor(slider), track.X, track.Y + track.Height + SpacingOf(slider).ToLabel, track.Width,
                    slider.Label, slider.Colour);
    SetColour(slider.Colour);
    DrawLoweredBorder(track.X - 4, track.Y - 4, track.Width + 8, track.Height + 8);
    DrawTrack(slider);
    PrintValue(slider);
}

/// Shows a new position in place: the track, and the value over its own ground.
void DrawChange(const Slider& slider) {
    GadgetBox track = TrackOf(slider);
    const GadgetFont& font = FontFor(slider);
    DrawTrack(slider);
    if (!slider.Print)
        return;
    gl::cpack(BackgroundOf(CurrentWindow));
    int y = track.Y - SpacingOf(slider).ToValue;
    gl::rectfi(track.X - 8, y - font.Descent - 1, track.X + track.Width + 7, track.Y - 5);
    PrintValue(slider);
}

void ShowChange(Gadget* gadget) {
    const Slider& slider = GadgetData<Slider>(gadget);
    if (CurrentWindow->Flags & WindowDoubleBuffered)
        RedrawCurrentWindow();
    else
        DrawInFront(gadget, [&slider] { DrawChange(slider); });
}

/// 0 when the owner took the slider away meanwhile.
int MoveSlider(Gadget* gadget, int position) {
    Slider& slider = GadgetData<Slider>(gadget);
    position = std::clamp(position, 0, RangeOf(slider));
    int old = slider.Position;
    if (position == old)
        return 1;
    slider.Position = position;
    if (slider.Moved && !CallOwner(gadget, [&] { slider.Moved(slider.Arg, old, position); }))
        return 0;
    ShowChange(gadget);
    return 1;
}

template <class Function>
int TellPosition(Gadget* gadget, Function function) {
    const Slider& slider = GadgetData<Slider>(gadget);
    return !function || CallOwner(gadget, [&] { function(slider.Arg, slider.Position); });
}

int ClickSlider(Gadget* gadget) {
    const Slider& slider = GadgetData<Slider>(gadget);
    if (!MouseInGadgetBox(TrackOf(slider)))
        return 0;
    GadgetBox thumb = ThumbOf(slider);
    int offset = MouseInGadgetBox(thumb) ? MouseY - thumb.Y - SliderThumbHeight / 2 : 0;
    int remains = TellPosition(gadget, slider.Pressed);
    RepeatWhileHeld(
        [&] { remains = remains && MoveSlider(gadget, MouseY - offset - TrackOf(slider).Y - SliderThumbHeight / 2); });
    if (remains)
        TellPosition(gadget, slider.Released);
    return 1;
}

void FreeSlider(Gadget* gadget) {
    FreeOwnedText(GadgetData<Slider>(gadget).Label);
}

void DescribeSlider(const Gadget* gadget, GadgetDescription& description) {
    const Slider& slider = GadgetData<Slider>(gadget);
    if (const char* name = slider.Name ? slider.Name : slider.Label)
        description.Label = name;
    description.Box = TrackOf(slider);
    description.Target = ThumbOf(slider);
    description.Text = std::to_string(slider.Position);
}

int WheelSlider(Gadget* gadget, int, int turnY) {
    const Slider& slider = GadgetData<Slider>(gadget);
    if (!turnY || !MouseInGadgetBox(TrackOf(slider)))
        return 0;
    int notches = WholeNotches(turnY);
    if (notches && TellPosition(gadget, slider.Pressed) && MoveSlider(gadget, slider.Position + notches))
        TellPosition(gadget, slider.Released);
    return 1;
}

int ThumbYOfSlider(const Gadget* gadget, int value) {
    const Slider& slider = GadgetData<Slider>(gadget);
    return TrackOf(slider).Y + std::clamp(value, 0, RangeOf(slider)) + SliderThumbHeight / 2;
}

constexpr GadgetKind SliderKind = {
    .Name = "slider", .Describe = DescribeSlider, .Wheel = WheelSlider, .ThumbY = ThumbYOfSlider, .Steps = true};

void PrintNumber(bool small, int x, int y, int width, int value, std::uint32_t colour) {
    char text[12];
    itoa(value, text);
    DrawCentred(FontOf(small), x, y, width, text, colour);
}

} // namespace

Gadget* AddSlider(const SliderSpec& spec) {
    Gadget* gadget = CreateGadget<Slider>();
    GadgetData<Slider>(gadget) = {.X = spec.X,
                                  .Y = spec.Y,
                                  .Width = spec.Width,
                                  .Height = spec.Range + SliderThumbHeight,
                                  .Flags = spec.Flags,
                                  .Position = std::clamp(spec.Position, 0, spec.Range),
                                  .Pressed = spec.Pressed,
                                  .Moved = spec.Moved,
                                  .Released = spec.Released,
                                  .Shade = spec.Shade,
                                  .Print = spec.Print,
                                  .Arg = spec.Arg,
                                  .Label = CopyOfString(spec.Label),
                                  .Colour = GadgetColour(),
                                  .Name = spec.Name};
    gadget->DrawFn = DrawSlider;
    gadget->ClickFn = ClickSlider;
    gadget->FreeFn = FreeSlider;
    gadget->Kind = &SliderKind;
    GooeyRight = spec.X + spec.Width + 8;
    return gadget;
}

void ConfigureSlider(Gadget* gadget, int position, int redraw) {
    Slider& slider = GadgetData<Slider>(gadget);
    slider.Position = std::clamp(position, 0, RangeOf(slider));
    if (redraw)
        DrawInFront(gadget, [&slider] { DrawChange(slider); });
}

void PrintSlide(int x, int y, int width, int value, std::uint32_t colour) {
    PrintNumber(false, x, y, width, value, colour);
}

void PrintSlideSmall(int x, int y, int width, int value, std::uint32_t colour) {
    PrintNumber(true, x, y, width, value, colour);
}
