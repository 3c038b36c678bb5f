#include "geometry/colours.h"

#include <algorithm>

namespace {

// The order of the comparisons takes "not a number" to 0.
float HoldToUnit(float value) {
    return std::min(std::max(0.0f, value), 1.0f);
}

} // namespace

void UnpackRGB(std::uint32_t packed, float* rgb) {
    for (int component = 0; component < 3; ++component)
        rgb[component] = static_cast<float>((packed >> (8 * component) & 0xff) / 255.0);
}

std::uint32_t PackRGB(const float* rgb) {
    std::uint32_t packed = 0;
    for (int component = 0; component < 3; ++component)
        packed |= static_cast<std::uint32_t>(HoldToUnit(rgb[component]) * 255.0) << (8 * component);
    return packed;
}

void InterpolateRGB(const float* a, const float* b, float t, float* rgb) {
    for (int component = 0; component < 3; ++component)
        rgb[component] = HoldToUnit(a[component] + (b[component] - a[component]) * t);
}
