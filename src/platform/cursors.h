// The pointer's shapes. A shape is one or two bit planes of 16 x 16 or 32 x 32; plane 1 is the drawing, plane 2 (made
// for two-plane shapes) what surrounds it. Every window has a shape of its own, shown while the pointer is over it.
#pragma once

#include <cstdint>

namespace gl {

inline constexpr int C16X1 = 1;
inline constexpr int C16X2 = 2;
inline constexpr int C32X1 = 3;
inline constexpr int C32X2 = 4;

// The kind of shape that the next defcursor defines.
void curstype(int kind);
// Defines shape `index` (1 and up; 0 is the arrow) of the kind set before. Rows run from the bottom up, the leftmost
// pixel is the highest bit; a 16-row plane has 16 words of 16 bits, a 32-row plane 32 rows of two words, left word
// first; the second plane follows the first. Pixels set in plane 1 only are drawn in red, in both in black, in plane 2
// only in white.
void defcursor(int index, const std::uint16_t* planes);
// The shape's hot spot, from its lower left corner.
void curorigin(int index, int x, int y);
// The current window shows shape `index` (the arrow when it is not defined). The other two arguments have no meaning.
void setcursor(int index, int colour, int writemask);
// Hides and shows the pointer over the current window.
void cursoff();
void curson();

} // namespace gl
