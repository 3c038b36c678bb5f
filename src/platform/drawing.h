// Drawing primitives. Calls are immediate for the caller: what is drawn takes the state of that moment. Inside, they
// are gathered into large batches that FlushDrawing (or anything that needs the picture) sends on.
//
// Positions are in model coordinates of any precision; matrices take them to the eye in double precision, so that
// detail of a millimetre stays steady kilometres from the origin. In pixel coordinates (ortho2 over a viewport of the
// same size) lines, rectangles and points cover exactly the pixels that they name, ends included.
#pragma once

#include <cstdint>

namespace gl {

// ---- Colour ----
// Sets the current colour: vertices that follow are drawn in it, unlit, until a normal is given. Packed 0xAABBGGRR; the
// alpha matters for blending alone. Components of floats run from 0 to 1, of integers from 0 to 255; c3* set alpha to
// full. Values outside are clamped. In PUPDRAW these calls change nothing that is seen there (see color).
void cpack(uint32_t colour);
void RGBcolor(int red, int green, int blue);
void c3f(const float* colour);
void c4f(const float* colour);
void c3i(const int32_t* colour);
void c4i(const int32_t* colour);
void c3s(const int16_t* colour);
void c4s(const int16_t* colour);
// The current colour, packed.
uint32_t getcpack();

// ---- Normals and texture coordinates ----
// Sets the current normal, in model coordinates, of any length: vertices that follow are lit by the bound lights,
// material and lighting model until a colour is set. Without a bound material and lighting model they keep the current
// colour.
void n3f(const float* normal);
void n3d(const double* normal);
// Sets the current texture coordinates (s, t), taken through the texture matrix.
void t2f(const float* coordinates);
void t2d(const double* coordinates);
void t2s(const int16_t* coordinates);
void t2i(const int32_t* coordinates);

// ---- Vertices ----
// One vertex of the primitive that was begun; outside of one they do nothing. 2D vertices have z = 0.
void v2s(const int16_t* position);
void v2i(const int32_t* position);
void v2f(const float* position);
void v2d(const double* position);
void v3s(const int16_t* position);
void v3i(const int32_t* position);
void v3f(const float* position);
void v3d(const double* position);
void v4f(const float* position);
void v4d(const double* position);

// ---- Primitives ----
// Points of the point size.
void bgnpoint();
void endpoint();
// A line through all the vertices, of the line width and line style; one vertex alone draws nothing.
void bgnline();
void endline();
// The same, closed back to the first vertex.
void bgnclosedline();
void endclosedline();
// A filled polygon of three vertices or more. It may be concave; it should be flat and not cross itself (one that
// crosses itself is filled somehow, within its outline's box). The front is where the corners run counter-clockwise.
void bgnpolygon();
void endpolygon();
// Triangles, each vertex from the third on making one with the two before it; all turn the same way as the first.
// swaptmesh exchanges the two vertices that the next one joins.
void bgntmesh();
void endtmesh();
void swaptmesh();
// Quadrilaterals, each pair of vertices from the second on making one with the pair before it.
void bgnqstrip();
void endqstrip();

// ---- Shapes ----
// Rectangles between two opposite corners, z = 0: outlined by a line of the line width and style, and filled. In pixel
// coordinates a filled one covers both corner pixels.
void rect(float x1, float y1, float x2, float y2);
void rectf(float x1, float y1, float x2, float y2);
void recti(int x1, int y1, int x2, int y2);
void rectfi(int x1, int y1, int x2, int y2);
// Circles about (x, y), z = 0, outlined and filled; smooth at any size on the screen.
void circ(float x, float y, float radius);
void circf(float x, float y, float radius);
// Part of a circle counter-clockwise from one angle to another, in tenths of degrees from the positive x direction:
// the curve alone, or the filled sector.
void arc(float x, float y, float radius, int startAngle, int endAngle);
void arcf(float x, float y, float radius, int startAngle, int endAngle);

// ---- Clearing ----
// Fills the viewport, within the screen mask, with the current colour (with the current index in PUPDRAW), whatever the
// blending; the fill pattern and the write masks hold.
void clear();
// The same for the depth buffer: its farthest value.
void zclear();
// Colour and depth at once: a packed colour, and a depth from getgdesc(GD_ZMIN) to getgdesc(GD_ZMAX).
void czclear(uint32_t colour, int32_t depth);

// ---- Pixel rectangles ----
// Writes a rectangle of packed pixels (0xAABBGGRR, rows from the bottom), corners included, in window pixels whatever
// the matrices; each is drawn as a square of a drawing pixel. Blending and the screen mask hold.
void lrectwrite(int x1, int y1, int x2, int y2, const uint32_t* pixels);
// Reads one back (of the buffer that is drawn to), one sample a drawing pixel; returns the number of pixels.
int lrectread(int x1, int y1, int x2, int y2, uint32_t* pixels);

} // namespace gl
