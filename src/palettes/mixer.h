#pragma once

// The gadgets of the material editor in which a colour is mixed.

/// Adds the strip of pure colours, and below the square in which one of them is mixed the colour that comes of it. The
/// lower left corners are (SpectrumStart, y) and (x, y), in pixels of the window.
void AddSpectrum(int y);
void AddMixer(int x, int y);

inline constexpr int SpectrumHeight = 12;
/// Of the mixer with the mixed colour under it.
inline constexpr int MixerHeight = 164;
