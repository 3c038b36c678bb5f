#include "village.h"

#include "buildings.h"
#include "model_builder.h"
#include "vehicle.h"

#include "store/accessors.h"
#include "views/scene_views.h"

#include <cmath>

namespace {

constexpr double Length = 320; // of the ground, along the road
constexpr double RoadHalf = 3.2;

/// The road runs along x and winds a little.
double RoadY(double x) {
    return 7 * std::sin(x / 42);
}

/// Degrees, counter-clockwise from the x axis.
double RoadYaw(double x) {
    return std::atan(7.0 / 42 * std::cos(x / 42)) * RadiansToDegrees;
}

/// Flat where houses stand, hills beyond.
double GroundHeight(double x, double fromRoad) {
    const double out = Step(58, 118, std::fabs(fromRoad));
    return out * (7 + 4 * std::sin(x / 37 + (fromRoad > 0 ? 1.0 : 3.5)) + 2 * std::sin(x / 19));
}

Point OnGround(double x, double fromRoad) {
    return {x, RoadY(x) + fromRoad, GroundHeight(x, fromRoad)};
}

Object* BuildGround() {
    ObjectBuilder builder("Ground");
    SubObject* land = builder.BeginPart("Land");
    const Surface grass = Smooth(Textured("grass", 9, 9)), road = Textured("road", 1, 7);
    Surface clover = Smooth({NamedMaterial("Clover", {0.72, 0.85, 0.55}), NamedTexture("grass"), 4, 4});
    clover.Plain = NamedMaterial("Clover leaves", {0.30, 0.48, 0.12});
    const Surface fields[] = {Smooth(Textured("wheat", 6, 6)), grass, Smooth(Textured("furrows", 5, 5)), grass, clover};
    constexpr int Columns = 32;
    constexpr double Rows[] = {-110,     -98, -86, -74, -62, -50, -36, -22, -10, -RoadHalf,
                               RoadHalf, 10,  22,  36,  50,  62,  74,  86,  98,  110};
    constexpr int RowCount = std::size(Rows) - 1;
    for (int column = 0; column < Columns; ++column) {
        const double x0 = -Length / 2 + column * Length / Columns, x1 = x0 + Length / Columns;
        for (int row = 0; row < RowCount; ++row) {
            const Point corners[4] = {OnGround(x0, Rows[row]), OnGround(x1, Rows[row]), OnGround(x1, Rows[row + 1]),
                                      OnGround(x0, Rows[row + 1])};
            const bool isRoad = Rows[row] == -RoadHalf;
            const bool isField = std::fabs(Rows[row] + Rows[row + 1]) > 110;
            const int plot = (column / 4 + (row > RowCount / 2 ? 2 : 0)) % 5;
            const Surface& surface = isRoad ? road : isField ? fields[plot] : grass;
            std::vector<Corner> face;
            for (int i = 0; i < 4; ++i)
                face.push_back({corners[i], isRoad ? (i < 2 ? 1 : 0) : corners[i].X / surface.TileWidth,
                                (isRoad ? corners[i].X : corners[i].Y) / surface.TileHeight});
            builder.AddMappedFace(face, surface);
        }
    }
    builder.BeginPart("Square");
    SubObject* square = CurrentObject()->FirstSubObject;
    const double z = 0.05;
    std::vector<Point> paving;
    for (int i = 0; i <= 8; ++i)
        paving.push_back({-26 + i * 6.5, RoadY(-26 + i * 6.5) + RoadHalf, z});
    for (const Point& corner : {Point{26, 21.5, z}, Point{-26, 21.5, z}})
        paving.push_back(corner);
    builder.AddFace(paving, Textured("cobbles", 3, 3));
    std::vector<Point> shore, water;
    for (int i = 0; i < 24; ++i) {
        const double angle = 15 * i * DegreesToRadians, reach = 9 + 1.2 * std::sin(3 * angle + 0.5);
        shore.push_back({1.25 * reach * std::cos(angle) + 2, reach * std::sin(angle) - 22, z});
        water.push_back({1.15 * reach * std::cos(angle) + 2, 0.92 * reach * std::sin(angle) - 22, z});
    }
    Polygon* bank = builder.AddFace(shore, Textured("furrows", 3, 3));
    builder.AddFace(water, {NamedMaterial("Water", {0.22, 0.42, 0.55}, {0.9, 0.5, 60})}, bank);
    builder.AddLevel("Everywhere", 1000000, {land, square});
    return CurrentObject();
}

/// A picture of a tree that turns to the eye.
Object* BuildTree(const char* name, const char* image, double width, double height) {
    ObjectBuilder builder(name);
    SubObject* picture = builder.BeginPart("Picture");
    // Unlit: the light is in the picture.
    Surface surface = Textured(image, 0, 0);
    surface.Material = NamedMaterial("White", {1, 1, 1});
    surface.Lighting = LightingUnlit;
    surface.Texture->ClampS = surface.Texture->ClampT = 1;
    const double half = width / 2;
    builder.AddFace({{-half, 0, 0}, {half, 0, 0}, {half, 0, height}, {-half, 0, height}}, surface);
    builder.AddLevel("Everywhere", 1000000, {picture});
    CurrentObject()->Attributes |= ObjectIsBillboard;
    return CurrentObject();
}

Object* BuildLamp() {
    ObjectBuilder builder("Street lamp");
    const Surface iron = Smooth({NamedMaterial("Iron", {0.16, 0.20, 0.18}, {0.9, 0.5, 30})});
    const Surface glow = Smooth({NamedMaterial("Lamp glass", {0.98, 0.93, 0.72}, {0.9, 0.4, 40, 1, 0.4})});
    SubObject* lamp = builder.BeginPart("Lamp");
    builder.AddTurned({{0.18, 0, 0}, {0.18, 0, 0.25}, {0.08, 0, 0.5}, {0.06, 0, 3.4}, {0.12, 0, 3.5}}, 8, iron);
    builder.AddTurned({{0.12, 0, 3.5}, {0.26, 0, 4.0}}, 8, glow);
    builder.AddTurned({{0.32, 0, 4.0}, {0.1, 0, 4.22}, {0, 0, 4.4}}, 8, iron);
    SubObject* post = builder.BeginPart("Post");
    builder.AddBox({-0.06, -0.06, 0}, {0.06, 0.06, 4}, {iron.Material});
    builder.AddLevel("Near", 90, {lamp});
    builder.AddLevel("Far", 220, {post});
    return CurrentObject();
}

Object* BuildWell() {
    ObjectBuilder builder("Well");
    SubObject* well = builder.BeginPart("Well");
    const Surface stone = Smooth(Textured("stone", 0.25, 1.6)), wood = Textured("planks", 1, 1);
    builder.AddTurned({{1.3, 0, 0}, {1.3, 0, 0.9}}, 16, stone);
    builder.AddTurned({{1.3, 0, 0.9}, {1.0, 0, 0.9}}, 16, Textured("stone", 0.25, 1));
    builder.AddTurned({{1.0, 0, 0.9}, {1.0, 0, 0.2}}, 16, stone);
    builder.AddTurned({{1.0, 0, 0.3}, {0, 0, 0.3}}, 16, {NamedMaterial("Deep water", {0.06, 0.10, 0.14})});
    for (const double x : {-1.15, 1.15})
        builder.AddBox({x - 0.08, -0.08, 0.9}, {x + 0.08, 0.08, 2.5}, wood);
    for (const double side : {-1.0, 1.0})
        builder.AddFaceAway({0, 0, 1}, {{-1.6, side * 1.3, 2.2}, {1.6, side * 1.3, 2.2}, {1.6, 0, 3.1}, {-1.6, 0, 3.1}},
                            Textured("tiles", 2, 2));
    for (const double x : {-1.6, 1.6})
        builder.AddFaceAway({0, 0, 2}, {{x, -1.3, 2.2}, {x, 1.3, 2.2}, {x, 0, 3.1}}, wood);
    builder.AddLevel("Everywhere", 1000000, {well});
    return CurrentObject();
}

struct Plot {
    double X;
    int Side; // 1: north of the road
    int House;
};

/// The plots on both sides; the church square and the pond lie in the middle.
constexpr Plot Plots[] = {{-138, 1, 0},  {-117, 1, 2}, {-96, 1, 1},  {-75, 1, 3},  {-54, 1, 4},
                          {54, 1, 2},    {75, 1, 0},   {96, 1, 3},   {117, 1, 1},  {-128, -1, 3},
                          {-107, -1, 0}, {-86, -1, 4}, {-65, -1, 1}, {-44, -1, 2}, {-23, -1, 3},
                          {32, -1, 4},   {53, -1, 0},  {74, -1, 2},  {116, -1, 3}, {137, -1, 1}};

void PlaceHouses(Object* const (&houses)[5]) {
    Branch* group = AddGroup("Houses");
    int number = 0;
    for (const Plot& plot : Plots) {
        const double yaw = RoadYaw(plot.X) + (plot.Side > 0 ? 0 : 180);
        const std::string name = "House " + std::to_string(++number);
        PlaceObject(group, name.c_str(), houses[plot.House], {plot.X, RoadY(plot.X) + plot.Side * 14.5, 0}, yaw);
    }
}

void PlaceTree(Branch* group, Object* tree, double x, double fromRoad) {
    PlaceObject(group, "Tree", tree, OnGround(x, fromRoad), 0);
}

/// Gardens, the church yard, the hedgerows between the fields, and woods on the hills.
void PlaceTrees(Object* const (&trees)[5]) {
    Branch* group = AddGroup("Trees");
    int number = 0;
    const auto any = [&](double from, double to, int salt) { return from + (to - from) * Random(number, salt, 80); };
    for (const Plot& plot : Plots) {
        ++number;
        PlaceTree(group, trees[number % 3], plot.X + any(-6, 6, 1), plot.Side * any(23, 29, 2));
        PlaceTree(group, trees[(number + 1) % 4], plot.X + 10.5, plot.Side * any(12, 30, 3));
    }
    for (const double x : {-22.0, 24.0})
        for (const double away : {26.0, 36.0, 46.0})
            PlaceTree(group, trees[away > 30 ? 0 : 1], x + any(-2, 2, static_cast<int>(away)), away);
    for (const Point& p : {Point{-11, -33, 0}, Point{17, -31, 0}, Point{19, -15, 0}, Point{-4, -36, 0}})
        PlaceObject(group, "Tree", trees[1], p, 0);
    for (int hedgerow = -3; hedgerow <= 3; ++hedgerow)
        for (const double side : {-1.0, 1.0})
            for (double away = 58; away < 108; away += any(7, 15, 5)) {
                ++number;
                PlaceTree(group, trees[number % 2 ? 0 : 4], hedgerow * 40 + any(-2, 2, 4), side * away);
            }
    for (int i = 0; i < 60; ++i) {
        ++number;
        PlaceTree(group, trees[number % 3 ? 2 : 3], any(70, 155, 6), any(78, 106, 7));
        if (i % 2)
            PlaceTree(group, trees[number % 4 ? 2 : 0], any(-155, -90, 8), -any(82, 106, 9));
    }
}

} // namespace

void BuildVillage() {
    Object* ground = BuildGround();
    const Surface cream = {NamedMaterial("Cream", {0.84, 0.80, 0.70}), NamedTexture("plaster"), 4, 4};
    const Surface pink = {NamedMaterial("Pink", {0.88, 0.68, 0.60}), NamedTexture("plaster"), 4, 4};
    Object* const houses[] = {
        BuildCottage("Timber cottage", Textured("timber", 2.75, 3.1), Textured("tiles", 3, 3), "green_door"),
        BuildCottage("Stone cottage", Textured("stone", 2.6, 2.6), Textured("slates", 3, 3), "red_door"),
        BuildTownHouse("Brick house", Textured("brick", 2.2, 1.6), Textured("slates", 3, 3), "green_door"),
        BuildTownHouse("Cream house", cream, Textured("tiles", 3, 3), "red_door"),
        BuildCottage("Pink cottage", pink, Textured("tiles", 3, 3), "green_door")};
    Object* const trees[] = {BuildTree("Oak", "oak", 10.5, 11), BuildTree("Birch", "birch", 9, 9.5),
                             BuildTree("Pine", "pine", 10, 13), BuildTree("Young oak", "oak", 6.5, 7),
                             BuildTree("Tall birch", "birch", 11, 13)};
    Object* church = BuildChurch();
    Object* barn = BuildBarn();
    Object* well = BuildWell();
    Object* lamp = BuildLamp();
    Object* car = BuildVehicle("Car");

    PlaceTrees(trees);
    Branch* street = AddGroup("Street");
    for (int i = -4; i <= 4; ++i) {
        const double x = 34.0 * i + 6;
        PlaceObject(street, "Lamp", lamp, {x, RoadY(x) + (i % 2 ? 4.2 : -4.2), 0}, 0);
    }
    for (const Point& p : {Point{-40, -1.6, 0}, Point{24, 1.6, 180}, Point{90, 1.6, 180}})
        PlaceObject(street, "Car", car, {p.X, RoadY(p.X) + p.Y, 0.02}, RoadYaw(p.X) + p.Z);
    PlaceObject(street, "Well", well, {14, 14, 0.05}, 20);
    PlaceHouses(houses);
    PlaceObject(AddGroup("Farm"), "Barn", barn, {95, RoadY(95) - 24, 0}, 180);
    PlaceObject(AddGroup("Church"), "Church", church, {0, 31, 0}, 0);
    PlaceObject(AddGroup("Ground"), "Ground", ground, {0, 0, 0}, 0);
    SaveView(true, {{4, 2, 5}, 132, 30, 20, -6});
}
