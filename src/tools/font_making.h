#pragma once

#include "tools/fonts.h"

#include <string>

/// A letter has fewer triangles than this.
inline constexpr int TriangleLimit = 200;

/// Makes a font of the outlines in a font file (TrueType, OpenType, Type 1): curves become edges so short that a letter
/// shows no corner at 54 pixels. A font of symbols gives those of its own encoding. Returns what is wrong with the
/// file; an empty text: nothing.
std::string MakeFont(const char* path, Font& font);
