// The rendering state of the current window: viewport and masks, depth, blending, culling, patterns, lines, clipping.
// Each window has its own; setting what is set already costs nothing, and changes without drawing between them are
// free.
#pragma once

#include <cstdint>

namespace gl {

// ---- Viewport and screen mask, in window pixels, both edges included, 16-bit values ----
// What the projected unit cube covers. It also sets the screen mask to the same box.
void viewport(int left, int right, int bottom, int top);
void getviewport(int16_t* left, int16_t* right, int16_t* bottom, int16_t* top);
// Saves viewport, screen mask and depth range on a stack; 16 levels, more or fewer are reported on standard error.
void pushviewport();
void popviewport();
// Nothing is drawn outside the screen mask.
void scrmask(int left, int right, int bottom, int top);
void getscrmask(int16_t* left, int16_t* right, int16_t* bottom, int16_t* top);

// ---- Depth ----
void zbuffer(bool on);
bool getzbuffer();

// When a pixel passes the depth test; less or equal at first.
enum DepthFunction { ZF_NEVER, ZF_LESS, ZF_EQUAL, ZF_LEQUAL, ZF_GREATER, ZF_NOTEQUAL, ZF_GEQUAL, ZF_ALWAYS };

void zfunction(int function);
// Depth is written where the mask is not 0.
void zwritemask(uint32_t mask);
// The depth values that the near and far plane are given, between getgdesc(GD_ZMIN) and getgdesc(GD_ZMAX).
void lsetdepth(int32_t nearDepth, int32_t farDepth);

// ---- Colour ----
// Which bits of red, green, blue and alpha are written, packed as colours are; a channel is written when any of its
// bits is set, so that 0 writes no colour at all and 0xFFFFFFFF everything.
void wmpack(uint32_t mask);

// How drawn and present colour add up; BF_ONE, BF_ZERO replaces.
enum BlendFactor { BF_ZERO, BF_ONE, BF_DC, BF_SC = BF_DC, BF_MDC, BF_MSC = BF_MDC, BF_SA, BF_MSA, BF_DA, BF_MDA };

void blendfunction(int sourceFactor, int destinationFactor);

// Pixels whose alpha (0 to 255) does not pass are dropped.
enum AlphaFunction { AF_NEVER, AF_LESS, AF_EQUAL, AF_LEQUAL, AF_GREATER, AF_NOTEQUAL, AF_GEQUAL, AF_ALWAYS };

void afunction(int reference, int function);

// With multisampling: alpha decides how many samples of a pixel are covered (MSA_ALPHA), or does not (MSA_MASK_ONE).
enum SampleAlpha { MSA_MASK_ONE, MSA_ALPHA };

void msalpha(int mode);

enum ShadeModel { FLAT, GOURAUD };

// Colours vary across a primitive (GOURAUD, at first) or take its last vertex's (FLAT).
void shademodel(int model);

// ---- Polygons ----
// Polygons that turn their back are not drawn.
void backface(bool on);
bool getbackface();
// Fronts are what is seen clockwise, as mirroring matrices make them; at first they are seen counter-clockwise.
void clockwisefronts(bool on);
// Filled polygons lie behind lines along their edges, by as much as their depth changes over a pixel, as they do at
// first. On silhouettes, the back of a body may then come before its front.
void behindlines(bool on);
// Fill patterns: 16 rows of 16 bits, the first row at the bottom, the highest bit at the left, fixed to the window;
// bits that are set are drawn. Pattern 0 is solid and cannot be changed; setting a pattern that was never defined is
// solid too. Sizes 32 and 64 take 32 x 32 and 64 x 64 bits, 2 and 4 words a row. They apply to everything that is
// filled.
void defpattern(int index, int size, const uint16_t* rows);
void setpattern(int index);
int getpattern();

// ---- Lines ----
// In drawing pixels, at least 1.
void linewidth(int width);
void linewidthf(float width);
// Points are squares of this many drawing pixels, at least 1.
void pntsize(int size);
// Line styles: 16 bits, the lowest first, a drawing pixel of length each; set bits are drawn. Style 0 is solid.
void deflinestyle(int index, uint16_t bits);
void setlinestyle(int index);
int getlstyle();

// Lines whose normal points away from the eye, or across its look, are not drawn where that is so.
void facinglines(bool on);

// Smooth edges for lines; needs blending to be seen.
enum LineSmoothing { SML_OFF = 0, SML_ON = 1, SML_SMOOTHER = 2 };

void linesmooth(int mode);
// Vertices keep their fractions of pixels. The layer always draws so; the setting is only remembered.
void subpixel(bool on);
// Lines and points in a colour that fades with depth (depthcue): from the maxima at depth `nearDepth` to the minima at
// `farDepth`; components 0 to 255, depths between getgdesc(GD_ZMIN) and getgdesc(GD_ZMAX).
void depthcue(bool on);
void lRGBrange(int minRed, int minGreen, int minBlue, int maxRed, int maxGreen, int maxBlue, int32_t nearDepth,
               int32_t farDepth);

// ---- Clip planes ----
// Six planes. CP_DEFINE takes four coefficients of a x + b y + c z + d >= 0 (what is kept) in the coordinates of the
// current viewing matrix; CP_ON and CP_OFF switch.
enum ClipPlaneMode { CP_OFF = 0, CP_ON = 1, CP_DEFINE = 2 };

void clipplane(int index, int mode, const float* coefficients);

// Splitting of textured polygons, which some hardware needs for perspective: the layer's textures always are correct.
enum Subdivision { SS_OFF = 0, SS_DEPTH = 1 };

void scrsubdivide(int mode, const float* parameters);

} // namespace gl
