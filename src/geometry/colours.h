#pragma once

#include <cstdint>

// Colours: 3 floats red, green, blue from 0 to 1, or packed into 32 bits with red in bits 0-7, green in 8-15 and blue
// in 16-23.

void UnpackRGB(std::uint32_t packed, float* rgb);

/// Components are truncated to 8 bits, so a colour that was unpacked may come back one step darker; components outside
/// 0 to 1 are taken as the nearer end.
std::uint32_t PackRGB(const float* rgb);

/// The colour at t on the way from a (t = 0) to b (t = 1), each component held between 0 and 1.
void InterpolateRGB(const float* a, const float* b, float t, float* rgb);
