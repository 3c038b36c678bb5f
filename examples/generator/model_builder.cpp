#include "model_builder.h"

#include "textures.h"

#include "base/directories.h"
#include "base/memory.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/scene_extent.h"
#include "store/structure_editing.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "views/grid.h"
#include "views/scene_views.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace {

Point NormalOf(const std::vector<Point>& places) {
    Point sum{};
    for (std::size_t i = 0; i < places.size(); ++i)
        sum = sum + Cross(places[i], places[(i + 1) % places.size()]);
    return Unit(sum);
}

/// Of the first of two surfaces with the smaller share, so that walls and roofs have their images upright.
void ImageAxes(const Point& normal, Point& right, Point& up) {
    constexpr double almostLevel = 0.999;
    right = std::fabs(normal.Z) > almostLevel ? Point{1, 0, 0} : Unit(Cross({0, 0, 1}, normal));
    up = Cross(normal, right);
}

std::vector<Corner> LayImage(const std::vector<Point>& places, const Surface& surface) {
    Point right, up;
    ImageAxes(NormalOf(places), right, up);
    double low[2] = {0, 0}, size[2] = {surface.TileWidth, surface.TileHeight};
    if (surface.TileWidth == 0)
        for (const int axis : {0, 1}) {
            const Point& direction = axis ? up : right;
            const auto [least, most] =
                std::minmax_element(places.begin(), places.end(), [&](const Point& a, const Point& b) {
                    return Dot(a, direction) < Dot(b, direction);
                });
            low[axis] = Dot(*least, direction);
            size[axis] = Dot(*most, direction) - low[axis];
        }
    std::vector<Corner> corners;
    for (const Point& place : places)
        corners.push_back({place, (Dot(place, right) - low[0]) / size[0], (Dot(place, up) - low[1]) / size[1]});
    return corners;
}

} // namespace

Point operator+(const Point& a, const Point& b) {
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}

Point operator-(const Point& a, const Point& b) {
    return {a.X - b.X, a.Y - b.Y, a.Z - b.Z};
}

Point operator*(const Point& a, double factor) {
    return {a.X * factor, a.Y * factor, a.Z * factor};
}

Point Cross(const Point& a, const Point& b) {
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

double Dot(const Point& a, const Point& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

Point Unit(const Point& a) {
    return a * (1 / std::sqrt(Dot(a, a)));
}

Surface Smooth(Surface surface, int lightGroup) {
    surface.Lighting = LightingSmooth;
    surface.LightGroup = lightGroup;
    return surface;
}

Material* NamedMaterial(const std::string& name, const Colour& colour, const Look& look) {
    for (Material* material : Along<&Material::Next>(FirstMaterial()))
        if (name == material->Name)
            return material;
    Material* material = NewMaterial();
    RenameMaterial(material, name.c_str());
    const double components[3] = {colour.Red, colour.Green, colour.Blue};
    for (int i = 0; i < 3; ++i) {
        material->Diffuse[i] = static_cast<float>(components[i]);
        material->Ambient[i] = static_cast<float>(components[i] * look.Ambient);
        material->Emission[i] = static_cast<float>(components[i] * look.Emission);
        material->Specular[i] = static_cast<float>(look.Specular);
    }
    material->Shininess = static_cast<float>(look.Shininess);
    material->Alpha = static_cast<float>(look.Opacity);
    AddMaterial(material);
    return material;
}

Material* Untinted() {
    return NamedMaterial("Textured", {0.8, 0.8, 0.8}, {1.2});
}

Texture* NamedTexture(const std::string& name) {
    const std::string path = std::string(FilePath) + "/textures/" + name + ".rgb";
    if (Texture* texture = TextureExists(path.c_str()))
        return texture;
    Texture* texture = NewTexture();
    texture->FileName = CopyOfString(path.c_str());
    AddTextureToList(texture);
    return texture;
}

Surface Textured(const std::string& name, double tileWidth, double tileHeight) {
    Surface surface = {Untinted(), NamedTexture(name), tileWidth, tileHeight};
    std::string title = name;
    title[0] = static_cast<char>(std::toupper(title[0]));
    std::replace(title.begin(), title.end(), '_', ' ');
    surface.Plain = NamedMaterial(title, MeanColour(name));
    return surface;
}

ObjectBuilder::ObjectBuilder(const char* name) {
    AddObject(name, 0, 1);
}

SubObject* ObjectBuilder::BeginPart(const char* name) {
    return AddSubObject(name);
}

void ObjectBuilder::AddLevel(const char* name, double distance, std::initializer_list<SubObject*> parts) {
    AddLod(name)->Distance = distance;
    for (SubObject* part : parts)
        AddLodBead(part);
    // The nearest is the one that is edited.
    Lod*& first = CurrentObject()->FirstLod;
    for (Lod* lod : Along<&Lod::Next>(first))
        if (lod->Distance < SelectedLod()->Distance)
            SelectedLod() = lod;
}

Vertex* ObjectBuilder::VertexAt(const Point& place) {
    constexpr double perMetre = 10000;
    const double untransformed[3] = {place.X, place.Y, place.Z};
    double p[3];
    Transform3d(untransformed, Placement, p);
    Vertex*& vertex =
        Vertices[{std::lround(p[0] * perMetre), std::lround(p[1] * perMetre), std::lround(p[2] * perMetre)}];
    if (!vertex)
        vertex = AddVertex(p[0], p[1], p[2]);
    return vertex;
}

Polygon* ObjectBuilder::AddMappedFace(const std::vector<Corner>& corners, const Surface& surface, Polygon* parent) {
    PolygonBead* beads = nullptr;
    for (const Corner& corner : corners) {
        PolygonBead* bead = AddPolygonBead(beads, VertexAt(corner.Place));
        bead->TexCoord[0] = static_cast<float>(corner.U);
        bead->TexCoord[1] = static_cast<float>(corner.V);
    }
    Polygon* polygon = AddPolygon(beads, parent);
    if (parent)
        polygon->SubObject = parent->SubObject;
    polygon->Material = surface.Plain ? surface.Plain : surface.Material;
    polygon->TextureMaterial = surface.Material;
    polygon->Texture = surface.Texture;
    polygon->Lighting = surface.Lighting;
    polygon->LightGroup = surface.LightGroup;
    return polygon;
}

Polygon* ObjectBuilder::AddFace(const std::vector<Point>& places, const Surface& surface, Polygon* parent) {
    return AddMappedFace(LayImage(places, surface), surface, parent);
}

Polygon* ObjectBuilder::AddFaceAway(const Point& from, std::vector<Point> places, const Surface& surface) {
    if (Dot(NormalOf(places), places[0] - from) < 0)
        std::reverse(places.begin(), places.end());
    return AddFace(places, surface);
}

Polygon* ObjectBuilder::AddMappedFaceAway(const Point& from, std::vector<Corner> corners, const Surface& surface) {
    std::vector<Point> places;
    for (const Corner& corner : corners)
        places.push_back(corner.Place);
    if (Dot(NormalOf(places), places[0] - from) < 0)
        std::reverse(corners.begin(), corners.end());
    return AddMappedFace(corners, surface);
}

Polygon* ObjectBuilder::AddDecal(Polygon* wall, const Point& corner, const Point& right, double width, double height,
                                 const Surface& surface) {
    const Point across = right * width, up{0, 0, height};
    return AddFace({corner, corner + across, corner + across + up, corner + up}, surface, wall);
}

void ObjectBuilder::AddBox(const Point& low, const Point& high, const Surface& surface) {
    const Point middle = (low + high) * 0.5;
    const auto corner = [&](int x, int y, int z) {
        return Point{x ? high.X : low.X, y ? high.Y : low.Y, z ? high.Z : low.Z};
    };
    for (const int side : {0, 1}) {
        AddFaceAway(middle, {corner(side, 0, 0), corner(side, 1, 0), corner(side, 1, 1), corner(side, 0, 1)}, surface);
        AddFaceAway(middle, {corner(0, side, 0), corner(1, side, 0), corner(1, side, 1), corner(0, side, 1)}, surface);
    }
    AddFaceAway(middle, {corner(0, 0, 1), corner(1, 0, 1), corner(1, 1, 1), corner(0, 1, 1)}, surface);
}

void ObjectBuilder::AddTurned(const std::vector<Point>& profile, int sides, const Surface& surface) {
    const auto at = [&](std::size_t ring, int side) {
        const double angle = 2 * 3.14159265358979323846 * side / sides;
        const Point& p = profile[ring];
        return Corner{{p.X * std::cos(angle), p.X * std::sin(angle), p.Z},
                      static_cast<double>(side) / sides * (surface.TileWidth > 0 ? 1 / surface.TileWidth : 1),
                      surface.TileHeight > 0 ? p.Z / surface.TileHeight : 0};
    };
    for (std::size_t ring = 0; ring + 1 < profile.size(); ++ring)
        for (int side = 0; side < sides; ++side) {
            std::vector<Corner> corners;
            for (const Corner& corner :
                 {at(ring, side), at(ring, side + 1), at(ring + 1, side + 1), at(ring + 1, side)})
                if (std::none_of(corners.begin(), corners.end(),
                                 [&](const Corner& c) { return c.Place == corner.Place; }))
                    corners.push_back(corner);
            if (corners.size() > 2)
                AddMappedFace(corners, surface);
        }
}

Branch* PlaceObject(Branch* group, const char* name, Object* object, const Point& place, double yaw) {
    Branch* branch = AddBranch(group, BranchAsChild);
    branch->Name = CopyOfString(name);
    branch->Object = object;
    MultMatrix(YawMatrix(yaw), TranslationMatrix(place.X, place.Y, place.Z), branch->Transform);
    return branch;
}

Branch* AddGroup(const char* name) {
    Branch* branch = AddBranch(Scene(), BranchAsChild);
    branch->Name = CopyOfString(name);
    return branch;
}

void SaveView(bool ofScene, const FirstView& first) {
    View& view = ofScene ? DefaultScene3D : DefaultObject3D();
    view = {};
    view.Valid = view.Stale = view.Perspective = 1;
    view.Zoom = 1;
    Matrix& matrix = view.ViewMatrix;
    matrix = TranslationMatrix(-first.Centre.X, -first.Centre.Y, -first.Centre.Z);
    MultMatrix(matrix, YawMatrix(first.Yaw), matrix);
    MultMatrix(matrix, PitchMatrix(first.Pitch), matrix);
    MultMatrix(matrix, TranslationMatrix(0, first.Distance, 0), matrix);
    view.Projection = view.Transform = IdentityMatrix;
    view.GridMatrix = TranslationMatrix(0, 0, first.GridHeight);
    if (ofScene) {
        SceneView[0] = view;
        FitGrid(SceneRadius(), SceneGridIndex, SceneGridSteps);
    } else {
        ObjectView(0) = view;
        FitGrid(ObjectRadius(), GridIndex(), GridSteps());
    }
}
