#include "palettes/mixer.h"

#include "geometry/colours.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "palettes/colour_mixing.h"
#include "platform/drawing.h"

#include <algorithm>

namespace {

constexpr int Border = 4;
constexpr int ChipHeight = 24, SquareAboveChip = MixerHeight - MixerSize;
/// Of the strips that the square is drawn in: within one, both its axes are straight enough.
constexpr int StripWidth = 4;
constexpr int MarkRadius = 4, PointerWidth = 5;

struct Place {
    int X, Y;
};

Place PlaceOf(const Gadget* gadget) {
    return GadgetData<Place>(gadget);
}

GadgetBox SpectrumBox(const Gadget* gadget) {
    return {SpectrumStart, PlaceOf(gadget).Y, SpectrumEnd - SpectrumStart + 1, SpectrumHeight};
}

GadgetBox SquareBox(const Gadget* gadget) {
    const Place place = PlaceOf(gadget);
    return {place.X, place.Y + SquareAboveChip, MixerSize, MixerSize};
}

void DrawBorder(const GadgetBox& box) {
    SetColour(White);
    DrawLoweredBorder(box.X - Border, box.Y - Border, box.Width + 2 * Border, box.Height + 2 * Border);
}

void Corner(const float* rgb, double x, double y) {
    const double place[2] = {x, y};
    gl::c3f(rgb);
    gl::v2d(place);
}

void DrawSpectrum(Gadget* gadget) {
    const GadgetBox box = SpectrumBox(gadget);
    DrawBorder(box);
    gl::bgnqstrip();
    for (int ramp = 0; ramp <= Ramps; ++ramp) {
        int position = SpectrumStart + ramp % Ramps * RampWidth;
        float rgb[3];
        UnpackRGB(DoSpectrumCalc(position), rgb);
        const double x = SpectrumStart + ramp * RampWidth - 0.5;
        Corner(rgb, x, box.Y - 0.5);
        Corner(rgb, x, box.Y + box.Height - 0.5);
    }
    gl::endqstrip();
    DoSpectrumCalc(SpectrumY);
    const ClipScope clip(box.X, box.Y, box.Width, box.Height);
    SetColour(White);
    DrawFrame(SpectrumY - PointerWidth / 2 - 1, box.Y, PointerWidth + 2, box.Height, ShadeBlack);
    DrawFrame(SpectrumY - PointerWidth / 2, box.Y + 1, PointerWidth, box.Height - 2, ShadeFull);
}

void DrawMixer(Gadget* gadget) {
    const GadgetBox box = SquareBox(gadget);
    DrawBorder(box);
    float pure[3];
    UnpackRGB(DoSpectrumCalc(SpectrumY), pure);
    gl::bgnqstrip();
    for (int x = 0; x <= MixerSize; x += StripWidth) {
        float top[3];
        MixedColour(pure, x, 0, top);
        constexpr float black[3] = {};
        Corner(black, box.X + x - 0.5, box.Y - 0.5);
        Corner(top, box.X + x - 0.5, box.Y + box.Height - 0.5);
    }
    gl::endqstrip();
    {
        const ClipScope clip(box.X, box.Y, box.Width, box.Height);
        const int x = box.X + MixerX, y = box.Y + box.Height - 1 - MixerY;
        SetColour(White);
        DrawFrame(x - MarkRadius, y - MarkRadius, 2 * MarkRadius + 1, 2 * MarkRadius + 1, ShadeBlack);
        DrawFrame(x - MarkRadius + 1, y - MarkRadius + 1, 2 * MarkRadius - 1, 2 * MarkRadius - 1, ShadeFull);
    }
    const GadgetBox chip = {box.X, PlaceOf(gadget).Y, MixerSize, ChipHeight};
    DrawBorder(chip);
    SetColour(MixerColour());
    DrawBox(chip.X, chip.Y, chip.Width, chip.Height, ShadeFull);
    SetColour(White);
}

/// Has one or two numbers follow the pointer from a press within the border on.
template <class Take>
int Follow(const GadgetBox& box, Take take) {
    if (!MouseInBox(box.X - Border, box.Y - Border, box.Width + 2 * Border, box.Height + 2 * Border))
        return 0;
    const auto step = [&] {
        const int before[3] = {SpectrumY, MixerX, MixerY};
        take();
        return before[0] != SpectrumY || before[1] != MixerX || before[2] != MixerY;
    };
    if (step())
        RedrawCurrentWindow();
    FunctionDrag drag(gl::LEFTMOUSE, step, RedrawCurrentWindow);
    drag.Run();
    return 1;
}

int ClickSpectrum(Gadget* gadget) {
    return Follow(SpectrumBox(gadget), [] {
        SpectrumY = std::max(MouseX, 0);
        DoSpectrumCalc(SpectrumY);
    });
}

int ClickMixer(Gadget* gadget) {
    const GadgetBox box = SquareBox(gadget);
    return Follow(box, [&] {
        MixerX = std::clamp(MouseX - box.X, 0, MixerSize - 1);
        MixerY = std::clamp(box.Y + box.Height - 1 - MouseY, 0, MixerSize - 1);
    });
}

void DescribeSpectrum(const Gadget* gadget, GadgetDescription& description) {
    description.Label = "Spectrum";
    description.Box = SpectrumBox(gadget);
    description.Text = std::to_string(SpectrumY);
}

void DescribeMixer(const Gadget* gadget, GadgetDescription& description) {
    description.Label = "Mixer";
    description.Box = SquareBox(gadget);
    description.Text = std::to_string(MixerColour());
}

constexpr GadgetKind SpectrumKind = {"custom", DescribeSpectrum, nullptr, nullptr};
constexpr GadgetKind MixerKind = {"custom", DescribeMixer, nullptr, nullptr};

void Add(const Place& place, const GadgetKind& kind, void (*draw)(Gadget*), int (*click)(Gadget*)) {
    Gadget* gadget = CreateGadget<Place>();
    GadgetData<Place>(gadget) = place;
    gadget->DrawFn = draw;
    gadget->ClickFn = click;
    gadget->Kind = &kind;
}

} // namespace

void AddSpectrum(int y) {
    Add({SpectrumStart, y}, SpectrumKind, DrawSpectrum, ClickSpectrum);
}

void AddMixer(int x, int y) {
    MixerX = std::clamp(MixerX, 0, MixerSize - 1);
    MixerY = std::clamp(MixerY, 0, MixerSize - 1);
    Add({x, y}, MixerKind, DrawMixer, ClickMixer);
}
