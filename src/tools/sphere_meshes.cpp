#include "tools/sphere_meshes.h"

#include "geometry/matrices.h"
#include "geometry/vectors.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace {

using Point3 = std::array<double, 3>;

constexpr double A = 3.618033988749895, B = 5.854101966249685;

struct Icosahedron {
    Point3 Vertices[12];
    int Faces[20][3]; // counter-clockwise from outside
};

constexpr int DomeFaces = 12;

constexpr Icosahedron PlainBase = {{{0, B, A},
                                    {0, B, -A},
                                    {0, -B, A},
                                    {0, -B, -A},
                                    {A, 0, B},
                                    {A, 0, -B},
                                    {-A, 0, B},
                                    {-A, 0, -B},
                                    {B, A, 0},
                                    {B, -A, 0},
                                    {-B, A, 0},
                                    {-B, -A, 0}},
                                   {{0, 6, 4},   {4, 6, 2},  {0, 10, 6}, {0, 4, 8},  {6, 11, 2}, {4, 2, 9}, {8, 4, 9},
                                    {6, 10, 11}, {0, 1, 10}, {1, 0, 8},  {2, 11, 3}, {2, 3, 9},  {8, 9, 5}, {11, 10, 7},
                                    {1, 5, 7},   {3, 7, 5},  {1, 8, 5},  {10, 1, 7}, {9, 3, 5},  {11, 7, 3}}};

constexpr int NorthPole = 0, SouthPole = 3;
/// Turns the poles off the axis, so that no point of the mesh has an undefined longitude.
constexpr double TurnFromAxis = 5;

/// The base turned so that two of its vertices are the poles, which come first in their faces: there the strips are
/// shortest and the texture is least distorted.
Icosahedron MakeTexturedBase() {
    Icosahedron base = PlainBase;
    Matrix turn;
    MultMatrix(PitchMatrix(-std::atan2(A, B) * RadiansToDegrees), YawMatrix(TurnFromAxis), turn);
    for (Point3& vertex : base.Vertices)
        RotateVector(vertex.data(), turn, vertex.data());
    for (const int pole : {NorthPole, SouthPole})
        for (auto& face : base.Faces)
            if (int* first = std::find(face, face + 3, pole); first != face + 3)
                std::rotate(face, first, face + 3);
    return base;
}

Point3 Between(const Point3& from, const Point3& to, double t) {
    Point3 point;
    for (int axis = 0; axis < 3; ++axis)
        point[axis] = from[axis] + (to[axis] - from[axis]) * t;
    return point;
}

class FaceBuilder {
  public:
    FaceBuilder(const Icosahedron& base, const int (&corners)[3], int depth, bool textured)
        : Base(base),
          Corners(corners),
          Depth(depth),
          Textured(textured) {}

    SphereFace Build() {
        Face.Points.reserve(static_cast<std::size_t>(Depth + 1) * (Depth + 2) / 2);
        for (int row = 0; row <= Depth; ++row)
            for (int i = 0; i <= row; ++i) {
                Face.Points.push_back(GridPoint(row, i));
                Normalise(Face.Points.back().data());
            }
        for (int row = 0; row < Depth; ++row)
            Face.Strips.push_back(Strip(row));
        return std::move(Face);
    }

  private:
    /// A point of an edge, counted from vertex `from`; the same to the last bit in both faces that share the edge.
    Point3 EdgePoint(int from, int to, int i) const {
        if (from > to) {
            std::swap(from, to);
            i = Depth - i;
        }
        return i == Depth ? Base.Vertices[to]
                          : Between(Base.Vertices[from], Base.Vertices[to], static_cast<double>(i) / Depth);
    }

    Point3 GridPoint(int row, int i) const {
        if (row == Depth)
            return EdgePoint(Corners[2], Corners[1], i);
        const Point3 left = EdgePoint(Corners[0], Corners[2], row), right = EdgePoint(Corners[0], Corners[1], row);
        if (i == 0)
            return left;
        return i == row ? right : Between(left, right, static_cast<double>(i) / row);
    }

    const double* At(int row, int i) const {
        return Face.Points[static_cast<std::size_t>(row) * (row + 1) / 2 + i].data();
    }

    SphereStrip Strip(int row) const {
        SphereStrip strip = {{At(row + 1, 0), At(row, 0)}, {}, {}};
        strip.Nodes.reserve(static_cast<std::size_t>(2) * row + 1);
        const double *before = strip.Start[0], *last = strip.Start[1];
        for (int i = 0; i <= 2 * row; ++i) {
            SphereNode node = {i % 2 ? At(row, i / 2 + 1) : At(row + 1, i / 2 + 1), {}, {}};
            for (int axis = 0; axis < 3; ++axis)
                node.Normal[axis] = static_cast<float>(before[axis] + last[axis] + node.Point[axis]);
            Normalisef(node.Normal);
            before = std::exchange(last, node.Point);
            strip.Nodes.push_back(node);
        }
        if (Textured)
            PutTextureOn(strip);
        return strip;
    }

    static void TextureAt(const double* point, float* coordinates) {
        coordinates[0] = point[0] == 0 && point[2] == 0
                             ? PoleMarker
                             : static_cast<float>(std::atan2(point[0], point[2]) / (2 * std::numbers::pi) + 0.5);
        coordinates[1] = static_cast<float>(std::acos(std::clamp(-point[1], -1.0, 1.0)) / std::numbers::pi);
    }

    static void PutTextureOn(SphereStrip& strip) {
        std::vector<float*> along;
        const auto putAt = [&](const double* point, float* coordinates) {
            TextureAt(point, coordinates);
            along.push_back(coordinates);
        };
        for (const int start : {0, 1})
            putAt(strip.Start[start], strip.StartTexCoord[start]);
        for (SphereNode& node : strip.Nodes)
            putAt(node.Point, node.TexCoord);
        ContinueAcrossSeam(along);
        if (float& tip = *strip.StartTexCoord[1]; tip == PoleMarker)
            tip = (strip.Nodes.front().TexCoord[0] + strip.StartTexCoord[0][0]) / 2;
    }

    const Icosahedron& Base;
    const int (&Corners)[3];
    const int Depth;
    const bool Textured;
    SphereFace Face;
};

} // namespace

void ContinueAcrossSeam(const std::vector<float*>& along) {
    constexpr float nearOne = 0.75F, nearZero = 0.25F;
    float before = PoleMarker;
    int turns = 0; // that u has made: a strip goes to and fro between its rows, but round the pole one way only
    for (float* const u : along) {
        const float value = *u;
        if (value == PoleMarker)
            continue;
        if (turns == 0 && before != PoleMarker)
            turns = (before > nearOne && value < nearZero) - (before < nearZero && value > nearOne);
        if (turns > 0 ? value < nearZero : turns < 0 && value > nearOne)
            *u = value + static_cast<float>(turns);
        before = value;
    }
}

SphereMesh BuildSphereMesh(int depth, bool dome, bool textured) {
    static const Icosahedron TexturedBase = MakeTexturedBase();
    const Icosahedron& base = textured ? TexturedBase : PlainBase;
    SphereMesh mesh = {depth, dome, textured, {}};
    const int faces = dome ? DomeFaces : 20;
    for (int face = 0; face < faces; ++face)
        mesh.Faces.push_back(FaceBuilder(base, base.Faces[face], depth, textured).Build());
    return mesh;
}
