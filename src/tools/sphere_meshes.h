#pragma once

#include <array>
#include <vector>

// Geodesic spheres: an icosahedron whose faces are cut into triangular grids on the unit sphere. The y axis is up.

inline constexpr int LeastSphereDepth = 1, MostSphereDepth = 32;

/// One small triangle: this point and the two before it in the strip.
struct SphereNode {
    const double* Point; // 3 doubles, in the face's grid
    float TexCoord[2];
    float Normal[3]; // of the triangle, unit
};

/// A row of small triangles. With S and T the two start points and A, B, C, ... the nodes they run (S, T, A),
/// (A, T, B), (A, B, C), (C, B, D) and so on, each counter-clockwise seen from outside.
struct SphereStrip {
    const double* Start[2];
    float StartTexCoord[2][2];
    std::vector<SphereNode> Nodes;
};

/// A face of the icosahedron, cut up: its first row is a point, its last one has `depth` edges.
struct SphereFace {
    std::vector<std::array<double, 3>> Points; // row after row
    std::vector<SphereStrip> Strips;
};

/// Of unit radius. Points of neighbouring faces on their common edge are equal to the last bit.
struct SphereMesh {
    int Depth; // number of edges into which an edge of the icosahedron is cut
    bool Dome; // the faces towards +z only, among them four that cross the plane z = 0
    bool Textured;
    std::vector<SphereFace> Faces;
};

/// `depth` is within its limits.
SphereMesh BuildSphereMesh(int depth, bool dome, bool textured);

/// Calls function(corner, corner, corner) with each small triangle of a strip, counter-clockwise from outside. A corner
/// is (point, texture coordinates).
struct SphereCorner {
    const double* Point;
    const float* TexCoord;
};

template <class Function>
void ForEveryTriangle(const SphereStrip& strip, Function function) {
    SphereCorner before = {strip.Start[0], strip.StartTexCoord[0]}, last = {strip.Start[1], strip.StartTexCoord[1]};
    bool swapped = false;
    for (const SphereNode& node : strip.Nodes) {
        const SphereCorner corner = {node.Point, node.TexCoord};
        if (swapped)
            function(last, before, corner, node);
        else
            function(before, last, corner, node);
        swapped = !swapped;
        before = last;
        last = corner;
    }
}

/// Texture coordinates u along a strip, in the order of its points, made continuous across the seam where u goes from 1
/// to 0. Values at the poles (PoleMarker) are left alone.
inline constexpr float PoleMarker = 100;
void ContinueAcrossSeam(const std::vector<float*>& along);
