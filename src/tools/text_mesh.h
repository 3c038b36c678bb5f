#pragma once

#include "geometry/matrices.h"

struct Font;

/// Half the thickness of solid letters, font units.
inline constexpr double LetterDepth = 0.1;

/// Adds a text to the current object: polygons in the current material, those of one letter after those of the other,
/// centred about x = 0, with the baseline at y = 0. A point (x, y, z) in font units goes to (x, y, z) * placement;
/// solid letters reach from -LetterDepth to LetterDepth in z, others lie at 0 and face +z. Vertices at the same place
/// are joined. No undo snapshot is taken.
void AddTextToModel(const Font& font, const char* text, bool solid, const Matrix& placement);
