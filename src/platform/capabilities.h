// What the renderer says it can do.
#pragma once

#include <cstdint>

namespace gl {

// Numbers for getgdesc: the calling code's own numbers, with what each asks.
enum Inquiry {
    GD_XPMAX = 0,                // largest x of the screen, in drawing pixels: its width - 1
    GD_YPMAX = 1,                // largest y
    GD_DOUBLE_BUFFERED_RED = 9,  // bits of red with two buffers
    GD_SINGLE_BUFFERED_RED = 12, // bits of red with one buffer
    GD_DEPTH_BITS = 16,          // depth buffer bits, 0 without one
    GD_CURSOR_PLANES = 23,       // bit planes of a cursor
    GD_BLENDING = 25,            // 1: blendfunction works
    GD_DITHERING = 28,           // 1: colours are dithered
    GD_LINE_SMOOTHING = 31,      // 1: linesmooth works
    GD_OVERLAY_PLANES = 42,      // bit planes of the overlay
    GD_ZMIN = 62,                // the depth of the nearest
    GD_ZMAX = 63,                // the depth of the farthest
    GD_ALPHA_FUNCTION = 68,      // 1: afunction works
    GD_CLIP_PLANES = 73,         // number of clip planes
    GD_TWO_SIDED_LIGHTING = 76,  // 1: lighting models may be two-sided
    GD_MULTISAMPLE = 78,         // samples a pixel, 0 without multisampling
    GD_TEXTURE = 80,             // 1: textures
};

// The answer; -1 for a question that is not known. The screen's size needs SetScreenSize.
int32_t getgdesc(int inquiry);

// Writes the renderer's name into `name` (12 characters at most with the ending null) and returns 0.
int gversion(char* name);

// Bit planes of the current window's colour buffer.
int getplanes();

} // namespace gl
