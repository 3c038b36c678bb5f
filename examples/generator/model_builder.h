#pragma once

#include "images.h"
#include "store/records.h"

#include <initializer_list>
#include <map>
#include <string>
#include <tuple>
#include <vector>

// Short ways to build models in the store. Lengths are in metres, z is up; polygons are counter-clockwise seen from
// outside.

struct Point {
    double X, Y, Z;

    bool operator==(const Point&) const = default;
};

Point operator+(const Point& a, const Point& b);
Point operator-(const Point& a, const Point& b);
Point operator*(const Point& a, double factor);
Point Cross(const Point& a, const Point& b);
double Dot(const Point& a, const Point& b);
Point Unit(const Point& a);

/// A corner with its place in the image.
struct Corner {
    Point Place;
    double U, V;
};

/// What a polygon is made of.
struct Surface {
    ::Material* Material; // with the texture, if there is one
    ::Texture* Texture = nullptr;
    /// Metres that one tile of the image covers; with a width of 0 the image covers the polygon once.
    double TileWidth = 1, TileHeight = 1;
    std::uint8_t Lighting = LightingFaceted;
    int LightGroup = 0;
    ::Material* Plain = nullptr; // where textures are not shown; null: the same
};

/// The surface, smooth within a light group.
Surface Smooth(Surface surface, int lightGroup = 0);

struct Look {
    double Ambient = 0.9; // shares of the colour
    double Specular = 0;  // of white
    double Shininess = 20;
    double Opacity = 1;
    double Emission = 0; // share of the colour
};

/// A material of the current file, made when there is none of that name.
Material* NamedMaterial(const std::string& name, const Colour& colour, const Look& look = {});
/// Shows the texture's own colours.
Material* Untinted();
/// An image of the examples' texture directory, made a texture when it is none yet.
Texture* NamedTexture(const std::string& name);
/// That image on a material that shows its colours, of its mean colour where textures are not shown.
Surface Textured(const std::string& name, double tileWidth, double tileHeight);

/// Begins an object and builds it.
class ObjectBuilder {
  public:
    explicit ObjectBuilder(const char* name);

    /// What follows belongs to this new sub-object.
    SubObject* BeginPart(const char* name);
    /// A level of detail; levels are added from the nearest on.
    void AddLevel(const char* name, double distance, std::initializer_list<SubObject*> parts);

    /// Where the places of what follows are put.
    Matrix Placement = IdentityMatrix;

    /// A polygon whose corners say where they are in the image.
    Polygon* AddMappedFace(const std::vector<Corner>& corners, const Surface& surface, Polygon* parent = nullptr);
    /// A flat polygon with its image laid on without distortion: upright on walls and roofs.
    Polygon* AddFace(const std::vector<Point>& places, const Surface& surface, Polygon* parent = nullptr);
    /// The same, turned round if need be, so that it faces away from a place.
    Polygon* AddFaceAway(const Point& from, std::vector<Point> places, const Surface& surface);
    Polygon* AddMappedFaceAway(const Point& from, std::vector<Corner> corners, const Surface& surface);

    /// A rectangle on a wall: its lower left corner seen from outside, the direction to the right, and its size.
    Polygon* AddDecal(Polygon* wall, const Point& corner, const Point& right, double width, double height,
                      const Surface& surface);

    /// Without its bottom.
    void AddBox(const Point& low, const Point& high, const Surface& surface);
    /// Turned about the z axis: a profile of x (radius) and z from bottom to top, seen from outside.
    void AddTurned(const std::vector<Point>& profile, int sides, const Surface& surface);

  private:
    Vertex* VertexAt(const Point& place);

    std::map<std::tuple<long, long, long>, Vertex*> Vertices; // by place in tenths of a millimetre
};

/// Places an object in the scene below a branch, turned about z by `yaw` degrees.
Branch* PlaceObject(Branch* group, const char* name, Object* object, const Point& place, double yaw);
Branch* AddGroup(const char* name);

/// How a model is first seen: the eye looks at a place from a distance, from `Yaw` degrees (0: from the front, -y) and
/// `Pitch` degrees above the horizon. The grid lies at a height.
struct FirstView {
    Point Centre;
    double Distance, Yaw, Pitch, GridHeight;
};

/// The first view, and the grid to go with it, of the scene (true) or the current object.
void SaveView(bool ofScene, const FirstView& first);
