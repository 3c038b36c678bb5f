// Textures: images with their filters, how they meet the lit colour, and generated texture coordinates. Definitions
// have numbers from 1 up and are shared by all windows; what is bound belongs to the current window. A primitive is
// textured when a texture and a texture environment are bound.
#pragma once

#include <cstdint>

namespace gl {

// Tokens of texture property lists, each followed by one value.
constexpr float TX_NULL = 0; // ends the list
constexpr float TX_MINFILTER = 256, TX_MAGFILTER = 512, TX_INTERNAL_FORMAT = 1536, TX_WRAP_S = 784, TX_WRAP_T = 800;
// Values. Filters; 0 is the default: mipmap linear for minification, bilinear for magnification.
constexpr float TX_POINT = 272, TX_BILINEAR = 544, TX_BICUBIC = 560, TX_SHARPEN = 576;
constexpr float TX_MIPMAP_POINT = 289, TX_MIPMAP_LINEAR = 290, TX_MIPMAP_BILINEAR = 291, TX_MIPMAP_TRILINEAR = 292;
// Wrapping; the image repeats unless clamped.
constexpr float TX_CLAMP = 770, TX_REPEAT = 769;
// Reduced colour accuracy for 3 and 4 components.
constexpr float TX_I12A_3 = 1584, TX_I12A_4 = 1600;

// Defines texture `index`. The image has 1 (intensity), 2 (alpha, intensity), 3 (blue, green, red) or 4 (alpha, blue,
// green, red) bytes a pixel, rows from the bottom, each row's bytes rounded up to a multiple of 4. Any size: one too
// large for the driver is reduced. It is copied. `count` is the number of floats in the list, 0 when it ends with
// TX_NULL. Bad arguments are reported on standard error and define nothing; unknown tokens are ignored.
void texdef2d(int index, int components, int width, int height, const void* image, int count, const float* properties);
// True when that number is defined.
bool istexture(int index);

// Binds texture `index`, 0 or one never defined: none. The target is always 0.
void texbind(int target, int index);

// Texture environments: TV_MODULATE multiplies colour and texture, TV_DECAL lays it over by its alpha, TV_BLEND
// mixes towards white.
enum TextureEnvironment { TV_MODULATE = 257, TV_BLEND = 258, TV_DECAL = 259 };

void tevdef(int index, int mode);
void tevbind(int target, int index);

// Generated texture coordinates: for coordinate TX_S or TX_T, TG_LINEAR sets a x + b y + c z + d w of the vertex's own
// coordinates, TG_CONTOUR of its eye coordinates (the plane goes through the viewing matrix of this moment),
// TG_SPHEREMAP the direction in which the surface reflects the eye's view; TG_ON and TG_OFF switch. `plane` has four
// values for TG_LINEAR and TG_CONTOUR and is ignored otherwise. Setting a mode does not switch generation on.
enum TextureCoordinate { TX_S = 0, TX_T = 1 };

enum GenerationMode { TG_OFF = 0, TG_ON = 1, TG_CONTOUR = 2, TG_LINEAR = 3, TG_SPHEREMAP = 4 };

void texgen(int coordinate, int mode, const float* plane);

} // namespace gl
