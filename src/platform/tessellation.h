// Filling polygons that need not be convex.
#pragma once

#include <cstddef>
#include <vector>

namespace gl {

// Cuts a polygon in space into triangles that turn as it does. `positions` are count x 3 floats, `stride` floats apart;
// the indices of the corners are appended to `triangles`, three for each triangle. Up to four corners and convex
// polygons take linear time, others of n corners about n log n, none more than a second. A polygon that crosses itself
// is cut somehow, within its corners. False, with nothing appended, when a polygon would take longer.
bool Triangulate(const float* positions, int stride, int count, std::vector<int>& triangles);

// How many outlines have been refused so far, each counted once.
std::size_t HopelessOutlines();

// Of the two ways to cut a quadrilateral, whether the one from its first to its third corner leaves triangles that both
// turn as it does.
inline bool FirstDiagonal(const float* p, int stride) {
    const float *b = p + stride, *c = p + 2 * stride, *d = p + 3 * stride;
    const float u[3] = {b[0] - p[0], b[1] - p[1], b[2] - p[2]}, v[3] = {c[0] - p[0], c[1] - p[1], c[2] - p[2]},
                w[3] = {d[0] - p[0], d[1] - p[1], d[2] - p[2]};
    const float m[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    const float n[3] = {v[1] * w[2] - v[2] * w[1], v[2] * w[0] - v[0] * w[2], v[0] * w[1] - v[1] * w[0]};
    return m[0] * n[0] + m[1] * n[1] + m[2] * n[2] >= 0;
}

} // namespace gl
