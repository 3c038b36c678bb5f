#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// A model between a model file and another format, in arrays. Lengths are metres, z is up; matrices have the
// translation in their last row and are multiplied from the right.

namespace converters {

using Place = std::array<double, 16>;
inline constexpr Place Identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

struct Material {
    std::string Name;
    float Ambient[3] = {0, 0, 0}, Diffuse[3] = {0.1F, 0.1F, 0.1F}, Specular[3] = {1, 1, 1}, Emission[3] = {0, 0, 0};
    float Shininess = 64, Alpha = 1;
};

struct Texture {
    std::string Path; // as the model file names it
    bool ClampS = false, ClampT = false;
};

struct Corner {
    std::uint32_t Vertex = 0;
    float Normal[3] = {0, 0, 0};
    float TexCoord[2] = {0, 0};
};

struct Polygon {
    std::uint32_t FirstCorner = 0, Corners = 0;
    std::int32_t Material = 0, TextureMaterial = -1, Texture = -1; // -1: none
    std::int32_t Parent = -1;                                      // another polygon of the object
    std::int32_t SubObject = 0;
    std::int32_t LightGroup = 0;
    std::uint8_t Lighting = 1; // 0 unlit, 1 faceted, 2 smooth
};

struct Level {
    std::string Name;
    double Distance = 1000000;
    std::vector<int> Members; // sub-objects
};

struct Object {
    std::string Name;
    std::int32_t Id = 0;
    bool Billboard = false;
    std::vector<std::array<float, 3>> Vertices;
    std::vector<Corner> Corners;
    std::vector<Polygon> Polygons; // parents before their sub-polygons
    std::vector<std::string> SubObjects;
    std::vector<Level> Levels; // nearest first
};

struct Branch {
    std::string Name;
    int Parent = -1; // a branch before this one; -1: the scene's root
    int Object = -1; // index; -1: a group
    Place Transform = Identity;
    bool Visible = true;
};

struct Model {
    std::string Directory; // of the model file when it was written, for its textures
    std::vector<Material> Materials;
    std::vector<Texture> Textures;
    std::vector<Object> Objects;
    std::vector<Branch> Branches;
    bool SceneMode = false;
};

/// What an object looks like at a level: sub-objects, by index. Of an object without levels all.
std::vector<int> MembersAt(const Object& object, std::size_t level);

/// A placed object: from the scene, or every object at the origin when the scene places none.
struct Placed {
    std::string Name;
    int Object;
    Place Transform;
};

std::vector<Placed> PlacedObjects(const Model& model);

/// The unit normal of a polygon by Newell's method; 0, 0, 0 without area.
std::array<double, 3> NormalOf(const Object& object, const Polygon& polygon);

/// The corners' positions; sub-polygons are raised a little off their parents, so that renderers that know nothing of
/// them do not make them flicker.
std::vector<std::array<double, 3>> PositionsOf(const Object& object, const Polygon& polygon);

/// Triangles of a polygon as corner numbers within it: a fan where it is convex, ears cut off where it is not.
void Triangulate(const std::vector<std::array<double, 3>>& ring, std::vector<std::uint32_t>& triangles, bool& isFan);

std::array<double, 3> Transformed(const std::array<double, 3>& point, const Place& place);
Place Product(const Place& first, const Place& second);
/// False when there is no inverse.
bool Inverse(const Place& place, Place& inverse);
double Determinant(const Place& place);

} // namespace converters
