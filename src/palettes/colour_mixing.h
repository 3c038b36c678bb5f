#pragma once

#include <cstdint>

// The arithmetic of the material editor: the colour that is mixed, sliders that move together, and what a colour makes
// of a material. Colours are 3 floats from 0 to 1 or packed 0x00BBGGRR.

struct Material;

/// The strip of pure colours, in pixels of the editor: six ramps side by side.
inline constexpr int SpectrumStart = 12, RampWidth = 71, Ramps = 6;
inline constexpr int SpectrumEnd = SpectrumStart + Ramps * RampWidth - 1;
/// The square in which the pure colour is mixed with white, towards the right, and with black, downwards.
inline constexpr int MixerSize = 128;

/// What is mixed, kept with the defaults: the place in the strip, -1 for none yet, and that in the square, counted from
/// the pure colour in its upper left corner.
extern int SpectrumY, MixerX, MixerY;

/// The packed colour of the strip at a position, which is brought into the strip first.
std::uint32_t DoSpectrumCalc(int& position);
/// The pure colour mixed as the place in the square says.
void MixedColour(const float* pure, int x, int y, float* rgb);
/// What is mixed now, packed.
std::uint32_t MixerColour();

/// Moves the components of a colour together: one (0 to 2) takes a value, the others keep their ratio to it, or, where
/// it was 0 at the start, their distance. Every component stays within 0 and 1.
void JoinComponents(const float* start, int component, float value, float* rgb);

/// The buttons under "Generate:", by number.
enum GenerateKind { GenerateAll, GenerateEmissive, GenerateSpecular, GenerateDiffuse, GenerateAmbient };

/// Spreads a packed colour into a material.
void SpreadColour(Material* material, std::uint32_t colour, int kind);
