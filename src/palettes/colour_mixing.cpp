#include "palettes/colour_mixing.h"

#include "geometry/colours.h"
#include "store/records.h"

#include <algorithm>

int SpectrumY = -1, MixerX, MixerY;

namespace {

constexpr std::uint32_t RampColours[Ramps + 1] = {0xFF00FF, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF};
constexpr int UnsetPosition = 219;

void Scale(const float* rgb, float factor, float (&out)[3]) {
    std::transform(rgb, rgb + 3, out, [=](float component) { return component * factor; });
}

} // namespace

std::uint32_t DoSpectrumCalc(int& position) {
    if (position == -1)
        position = UnsetPosition;
    position = std::clamp(position, SpectrumStart, SpectrumEnd);
    const int ramp = (position - SpectrumStart) / RampWidth;
    if (ramp < 0 || ramp >= Ramps)
        return 0;
    float from[3], to[3], rgb[3];
    UnpackRGB(RampColours[ramp], from);
    UnpackRGB(RampColours[ramp + 1], to);
    InterpolateRGB(from, to, static_cast<float>(position - SpectrumStart - ramp * RampWidth) / RampWidth, rgb);
    return PackRGB(rgb);
}

void MixedColour(const float* pure, int x, int y, float* rgb) {
    constexpr float last = MixerSize - 1;
    const float white = static_cast<float>(std::clamp(x, 0, MixerSize - 1)) / last;
    const float black = static_cast<float>(std::clamp(y, 0, MixerSize - 1)) / last;
    for (int i = 0; i < 3; ++i)
        rgb[i] = (pure[i] + (1 - pure[i]) * white) * (1 - black);
}

std::uint32_t MixerColour() {
    float pure[3], rgb[3];
    UnpackRGB(DoSpectrumCalc(SpectrumY), pure);
    MixedColour(pure, MixerX, MixerY, rgb);
    return PackRGB(rgb);
}

void JoinComponents(const float* start, int component, float value, float* rgb) {
    constexpr float least = 0.01F;
    const float moved = start[component];
    for (int i = 0; i < 3; ++i) {
        rgb[i] = i == component ? value : moved != 0 ? start[i] * (value / moved) : start[i] + (value - moved);
        if (rgb[i] < least)
            rgb[i] = 0;
        rgb[i] = std::min(rgb[i], 1.0F);
    }
}

void SpreadColour(Material* material, std::uint32_t colour, int kind) {
    float mixed[3];
    UnpackRGB(colour, mixed);
    const bool all = kind == GenerateAll;
    if (all || kind == GenerateAmbient)
        Scale(mixed, 0.5F, material->Ambient);
    if (all || kind == GenerateDiffuse)
        Scale(mixed, 0.75F, material->Diffuse);
    if (all || kind == GenerateSpecular)
        Scale(mixed, 1, material->Specular);
    if (all || kind == GenerateEmissive)
        Scale(mixed, all ? 0.0F : 1.0F, material->Emission);
}
