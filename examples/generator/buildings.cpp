#include "buildings.h"

#include "store/accessors.h"

#include <cmath>

namespace {

// Where the levels of detail end, metres from the eye.
constexpr double NearEnd = 200, MiddleEnd = 420, Everywhere = 1000000;

constexpr Point Right{1, 0, 0}, Left{-1, 0, 0}, Back{0, 1, 0}, Front{0, -1, 0};

Surface Fitted(const char* image) {
    return Textured(image, 0, 0);
}

Surface Wood() {
    return {NamedMaterial("White paint", {0.88, 0.87, 0.82})};
}

/// A rectangular building whose ridge runs along x.
struct Gabled {
    double Width, Depth;     // outside its walls, along x and y
    double Height, Rise;     // of the walls, and of the roof above them
    double X = 0, Y = 0;     // of its middle
    double Eaves = 0.45;     // reach of the roof beyond the walls
    double Thickness = 0.16; // of the roof

    double Slope() const { return Rise / (Depth / 2); }

    Point Middle() const { return {X, Y, Height / 2}; }
};

struct Walls {
    Polygon *Front, *Back, *Left, *Right; // seen from the front
};

Walls AddWalls(ObjectBuilder& builder, const Gabled& shape, const Surface& surface) {
    const double x0 = shape.X - shape.Width / 2, x1 = shape.X + shape.Width / 2;
    const double y0 = shape.Y - shape.Depth / 2, y1 = shape.Y + shape.Depth / 2;
    const double h = shape.Height, top = h + shape.Rise;
    const auto gable = [&](double x) {
        return std::vector<Point>{{x, y0, 0}, {x, y1, 0}, {x, y1, h}, {x, shape.Y, top}, {x, y0, h}};
    };
    const Point middle = shape.Middle();
    return {builder.AddFaceAway(middle, {{x0, y0, 0}, {x1, y0, 0}, {x1, y0, h}, {x0, y0, h}}, surface),
            builder.AddFaceAway(middle, {{x1, y1, 0}, {x0, y1, 0}, {x0, y1, h}, {x1, y1, h}}, surface),
            builder.AddFaceAway(middle, gable(x0), surface), builder.AddFaceAway(middle, gable(x1), surface)};
}

/// The two slopes; with `edges` also what is seen of their thickness and from below.
void AddRoof(ObjectBuilder& builder, const Gabled& shape, const Surface& surface, bool edges) {
    const double x0 = shape.X - shape.Width / 2 - shape.Eaves * 0.7, x1 = shape.X + shape.Width / 2 + shape.Eaves * 0.7;
    const double reach = shape.Depth / 2 + shape.Eaves, low = shape.Height - shape.Eaves * shape.Slope();
    const double ridge = shape.Height + shape.Rise, t = shape.Thickness;
    const Point middle = shape.Middle();
    for (const double side : {-1.0, 1.0}) {
        const double y = shape.Y + side * reach;
        builder.AddFaceAway(
            middle, {{x0, y, low + t}, {x1, y, low + t}, {x1, shape.Y, ridge + t}, {x0, shape.Y, ridge + t}}, surface);
        if (!edges)
            continue;
        builder.AddFaceAway(middle, {{x0, y, low}, {x1, y, low}, {x1, y, low + t}, {x0, y, low + t}}, Wood());
        builder.AddFaceAway({shape.X, shape.Y, ridge + 99},
                            {{x0, y, low}, {x1, y, low}, {x1, shape.Y, ridge}, {x0, shape.Y, ridge}}, Wood());
        for (const double x : {x0, x1})
            builder.AddFaceAway(middle, {{x, y, low}, {x, shape.Y, ridge}, {x, shape.Y, ridge + t}, {x, y, low + t}},
                                Wood());
    }
}

void AddSill(ObjectBuilder& builder, const Point& corner, double width) {
    builder.AddBox(corner + Point{-0.08, -0.14, -0.12}, corner + Point{width + 0.08, 0, 0}, Wood());
}

/// A row of windows on the front and the back wall; sills are for the front.
struct WindowRow {
    std::vector<double> Places; // of their left edges, seen from the front
    double Sill, Width, Height;
};

void AddWindows(ObjectBuilder& builder, const Walls& walls, const Gabled& shape, const WindowRow& row) {
    const double front = shape.Y - shape.Depth / 2, back = shape.Y + shape.Depth / 2;
    for (const double x : row.Places) {
        builder.AddDecal(walls.Front, {x, front, row.Sill}, Right, row.Width, row.Height, Fitted("window"));
        builder.AddDecal(walls.Back, {-x, back, row.Sill}, Left, row.Width, row.Height, Fitted("window"));
    }
}

void AddGableWindow(ObjectBuilder& builder, const Walls& walls, const Gabled& shape, double sill, double width,
                    double height) {
    const double x = shape.Width / 2;
    builder.AddDecal(walls.Right, {shape.X + x, shape.Y - width / 2, sill}, Back, width, height, Fitted("window"));
    builder.AddDecal(walls.Left, {shape.X - x, shape.Y + width / 2, sill}, Front, width, height, Fitted("window"));
}

void AddChimney(ObjectBuilder& builder, double x, double y, double bottom, double top) {
    const Surface brick = Textured("brick", 1.1, 0.8);
    builder.AddBox({x - 0.35, y - 0.45, bottom}, {x + 0.35, y + 0.45, top}, brick);
    builder.AddBox({x - 0.43, y - 0.53, top}, {x + 0.43, y + 0.53, top + 0.14}, brick);
    const Matrix before = builder.Placement;
    const Surface pot = Smooth({NamedMaterial("Clay", {0.72, 0.38, 0.24})});
    for (const double offset : {-0.22, 0.22}) {
        builder.Placement = TranslationMatrix(x, y + offset, top + 0.14);
        builder.AddTurned({{0.15, 0, 0}, {0.12, 0, 0.4}, {0.15, 0, 0.45}}, 8, pot);
        builder.AddTurned({{0.15, 0, 0.45}, {0, 0, 0.45}}, 8, {NamedMaterial("Soot", {0.08, 0.07, 0.07})});
    }
    builder.Placement = before;
}

/// Lawn with a path from the door, and a hedge with an opening.
void AddGarden(ObjectBuilder& builder, const Gabled& house, double doorX) {
    const double x0 = -house.Width / 2 - 3, x1 = house.Width / 2 + 3;
    const double y0 = -house.Depth / 2 - 5.5, y1 = house.Depth / 2 + 9, z = 0.05;
    Polygon* lawn = builder.AddFace({{x0, y0, z}, {x1, y0, z}, {x1, y1, z}, {x0, y1, z}}, Textured("grass", 5, 5));
    const double path = 0.7;
    builder.AddFace({{doorX - path, y0, z},
                     {doorX + path, y0, z},
                     {doorX + path, -house.Depth / 2 + 1, z},
                     {doorX - path, -house.Depth / 2 + 1, z}},
                    Textured("cobbles", 2, 2), lawn);
    const Surface hedge = Textured("hedge", 1.6, 1.6);
    const double t = 0.6, h = 1.0;
    builder.AddBox({x0, y0, 0}, {doorX - path - 0.2, y0 + t, h}, hedge);
    builder.AddBox({doorX + path + 0.2, y0, 0}, {x1, y0 + t, h}, hedge);
    builder.AddBox({x0, y0 + t, 0}, {x0 + t, y1 - t, h + 0.3}, hedge);
    builder.AddBox({x1 - t, y0 + t, 0}, {x1, y1 - t, h + 0.3}, hedge);
    builder.AddBox({x0, y1 - t, 0}, {x1, y1, h + 0.5}, hedge);
}

/// The parts in their levels; `far` is the shape alone.
void AddLevels(ObjectBuilder& builder, SubObject* walls, SubObject* roof, SubObject* details, SubObject* far,
               SubObject* garden) {
    if (garden) {
        builder.AddLevel("Near", NearEnd, {garden, walls, roof, details});
        builder.AddLevel("Middle", MiddleEnd, {garden, walls, roof});
        builder.AddLevel("Far", Everywhere, {garden, far});
    } else {
        builder.AddLevel("Near", NearEnd, {walls, roof, details});
        builder.AddLevel("Middle", MiddleEnd, {walls, roof});
        builder.AddLevel("Far", Everywhere, {far});
    }
}

SubObject* AddFarShape(ObjectBuilder& builder, const Gabled& shape, const Surface& walls, const Surface& roof) {
    SubObject* far = builder.BeginPart("Far shape");
    AddWalls(builder, shape, walls);
    AddRoof(builder, shape, roof, false);
    return far;
}

void AddPorch(ObjectBuilder& builder, double x, double wallY, double height) {
    const double half = 1.1, depth = 1.3;
    const Surface wood = Wood();
    for (const double post : {x - half + 0.1, x + half - 0.1})
        builder.AddBox({post - 0.07, wallY - depth, 0}, {post + 0.07, wallY - depth + 0.14, height}, wood);
    builder.AddBox({x - 0.8, wallY - 0.7, 0}, {x + 0.8, wallY, 0.16}, Textured("stone", 2, 2));
    // Its ridge runs towards the street.
    const Matrix before = builder.Placement;
    MultMatrix(YawMatrix(90), TranslationMatrix(x, wallY - depth / 2, height), builder.Placement);
    const Gabled roof = {depth, 2 * half, 0, 0.75, 0, 0, 0.15, 0.1};
    AddRoof(builder, roof, Textured("tiles", 2.2, 2.2), true);
    const double front = depth / 2;
    builder.AddFaceAway({0, 0, 0}, {{-front, -half, 0}, {-front, half, 0}, {-front, 0, 0.75}}, wood);
    builder.AddFaceAway({0, 0, 0}, {{front, -half, 0}, {front, half, 0}, {front, 0, 0.75}}, wood);
    builder.Placement = before;
}

} // namespace

Object* BuildCottage(const char* name, const Surface& wallSurface, const Surface& roofSurface, const char* door) {
    ObjectBuilder builder(name);
    const Gabled shape = {11, 7.5, 3.1, 3.6};
    const double front = -shape.Depth / 2;
    SubObject* walls = builder.BeginPart("Walls");
    const Walls faces = AddWalls(builder, shape, wallSurface);
    const WindowRow row = {{-4.5, -2.4, 1.3, 3.2}, 1.0, 1.3, 1.35};
    AddWindows(builder, faces, shape, row);
    AddGableWindow(builder, faces, shape, 3.6, 1.1, 1.2);
    builder.AddDecal(faces.Front, {-0.5, front, 0.02}, Right, 1.0, 2.15, Fitted(door));
    SubObject* roof = builder.BeginPart("Roof");
    AddRoof(builder, shape, roofSurface, true);
    SubObject* details = builder.BeginPart("Details");
    AddChimney(builder, 3.6, 0, shape.Height + shape.Rise - 1.2, shape.Height + shape.Rise + 1.0);
    AddPorch(builder, 0, front, 2.35);
    for (const double x : row.Places)
        AddSill(builder, {x, front, row.Sill}, row.Width);
    SubObject* garden = builder.BeginPart("Garden");
    AddGarden(builder, shape, 0);
    SubObject* far = AddFarShape(builder, shape, wallSurface, roofSurface);
    AddLevels(builder, walls, roof, details, far, garden);
    return CurrentObject();
}

Object* BuildTownHouse(const char* name, const Surface& wallSurface, const Surface& roofSurface, const char* door) {
    ObjectBuilder builder(name);
    const Gabled shape = {9.5, 8.5, 5.8, 3.4};
    const double front = -shape.Depth / 2;
    SubObject* walls = builder.BeginPart("Walls");
    const Walls faces = AddWalls(builder, shape, wallSurface);
    const WindowRow rows[] = {{{-3.9, 2.5}, 0.9, 1.4, 1.6}, {{-3.9, -0.7, 2.5}, 3.7, 1.4, 1.5}};
    for (const WindowRow& row : rows)
        AddWindows(builder, faces, shape, row);
    AddGableWindow(builder, faces, shape, 3.7, 1.2, 1.4);
    AddGableWindow(builder, faces, shape, 6.3, 1.0, 1.1);
    builder.AddDecal(faces.Front, {-0.55, front, 0.3}, Right, 1.1, 2.3, Fitted(door));
    SubObject* roof = builder.BeginPart("Roof");
    AddRoof(builder, shape, roofSurface, true);
    SubObject* details = builder.BeginPart("Details");
    for (const double x : {-3.9, 3.9})
        AddChimney(builder, x, 0, shape.Height + shape.Rise - 1.2, shape.Height + shape.Rise + 1.1);
    for (const WindowRow& row : rows)
        for (const double x : row.Places)
            AddSill(builder, {x, front, row.Sill}, row.Width);
    builder.AddBox({-1, front - 1.2, 0}, {1, front, 0.15}, Textured("stone", 2, 2));
    builder.AddBox({-0.9, front - 0.7, 0.15}, {0.9, front, 0.3}, Textured("stone", 2, 2));
    builder.AddBox({-1.0, front - 0.7, 2.75}, {1.0, front, 2.9}, Wood());
    SubObject* garden = builder.BeginPart("Garden");
    AddGarden(builder, shape, 0);
    SubObject* far = AddFarShape(builder, shape, wallSurface, roofSurface);
    AddLevels(builder, walls, roof, details, far, garden);
    return CurrentObject();
}

Object* BuildBarn() {
    ObjectBuilder builder("Barn");
    const Surface planks = {NamedMaterial("Red wood", {0.80, 0.36, 0.30}), NamedTexture("planks"), 3, 3};
    const Surface roofSurface = Textured("slates", 3, 3);
    const Gabled shape = {18, 11, 4.6, 4.8};
    const double front = -shape.Depth / 2, end = shape.Width / 2;
    SubObject* walls = builder.BeginPart("Walls");
    const Walls faces = AddWalls(builder, shape, planks);
    for (const double x : {-2.0, 0.0})
        builder.AddDecal(faces.Front, {x, front, 0.02}, Right, 2, 3.8, Fitted("barn_door"));
    for (const double x : {-7.0, 5.0})
        builder.AddDecal(faces.Front, {x, front, 1.5}, Right, 2, 1.2, Fitted("window"));
    builder.AddDecal(faces.Right, {end, -1, 4.9}, Back, 2, 2, Fitted("barn_door"));
    builder.AddDecal(faces.Left, {-end, 1, 4.9}, Front, 2, 2, Fitted("barn_door"));
    SubObject* roof = builder.BeginPart("Roof");
    AddRoof(builder, shape, roofSurface, true);
    SubObject* details = builder.BeginPart("Details");
    // A ventilator on the ridge.
    const double ridge = shape.Height + shape.Rise;
    builder.AddBox({-0.9, -0.9, ridge - 0.6}, {0.9, 0.9, ridge + 0.9}, Textured("louvres", 0.9, 1.6));
    const Gabled cap = {1.8, 1.8, ridge + 0.9, 0.8, 0, 0, 0.3, 0.08};
    AddRoof(builder, cap, roofSurface, true);
    for (const double x : {-0.9, 0.9})
        builder.AddFaceAway({0, 0, ridge}, {{x, -0.9, ridge + 0.9}, {x, 0.9, ridge + 0.9}, {x, 0, ridge + 1.7}},
                            planks);
    builder.AddBox({6.5, front - 2.2, 0}, {8.5, front - 0.4, 1.4}, Textured("wheat", 1, 0.5)); // bales
    builder.AddBox({4.2, front - 2.0, 0}, {6.2, front - 0.4, 0.7}, Textured("wheat", 1, 0.5));
    SubObject* far = AddFarShape(builder, shape, planks, roofSurface);
    AddLevels(builder, walls, roof, details, far, nullptr);
    return CurrentObject();
}

namespace {

/// A window with a pointed arch; `corner` is its lower left corner.
void AddLancet(ObjectBuilder& builder, Polygon* wall, const Point& corner, const Point& right, double width,
               double height, const Surface& surface) {
    const Point up{0, 0, 1};
    std::vector<Point> places = {corner, corner + right * width};
    const double spring = height - width * 0.87;
    for (const double degrees : {0.0, 20.0, 40.0})
        places.push_back(corner + right * (width * std::cos(degrees * DegreesToRadians)) +
                         up * (spring + width * std::sin(degrees * DegreesToRadians)));
    places.push_back(corner + right * (width / 2) + up * height);
    for (const double degrees : {40.0, 20.0, 0.0})
        places.push_back(corner + right * (width - width * std::cos(degrees * DegreesToRadians)) +
                         up * (spring + width * std::sin(degrees * DegreesToRadians)));
    builder.AddFace(places, surface, wall);
}

void AddRound(ObjectBuilder& builder, Polygon* wall, const Point& centre, const Point& right, double radius,
              const Surface& surface) {
    std::vector<Point> places;
    for (int i = 0; i < 16; ++i)
        places.push_back(centre + right * (radius * std::cos(i * 22.5 * DegreesToRadians)) +
                         Point{0, 0, radius * std::sin(i * 22.5 * DegreesToRadians)});
    builder.AddFace(places, surface, wall);
}

struct Tower {
    double X, Half, Height, SpireHeight;
};

/// The four walls of the tower with door, clock and belfry; `decorated` or bare.
void AddTower(ObjectBuilder& builder, const Tower& tower, const Surface& stone, bool decorated) {
    const Point middle{tower.X, 0, tower.Height / 2};

    const struct { Point Normal, Right; } sides[] = {{Front, Right}, {Right, Back}, {Back, Left}, {Left, Front}};

    for (const auto& side : sides) {
        const Point corner = Point{tower.X, 0, 0} + side.Normal * tower.Half - side.Right * tower.Half;
        const Point far = corner + side.Right * (2 * tower.Half), up{0, 0, tower.Height};
        Polygon* wall = builder.AddFaceAway(middle, {corner, far, far + up, corner + up}, stone);
        if (!decorated)
            continue;
        const Point centre = Point{tower.X, 0, 0} + side.Normal * tower.Half;
        for (const double offset : {-1.35, 0.25})
            AddLancet(builder, wall, centre + side.Right * offset + Point{0, 0, tower.Height - 4.2}, side.Right, 1.1,
                      2.6, Fitted("louvres"));
        AddRound(builder, wall, centre + Point{0, 0, tower.Height - 6.2}, side.Right, 1.2, Fitted("clock"));
        if (side.Normal == Left)
            AddLancet(builder, wall, centre + side.Right * -1.1 + Point{0, 0, 0.02}, side.Right, 2.2, 4.2,
                      Fitted("barn_door"));
        else if (side.Normal != Right)
            AddLancet(builder, wall, centre + side.Right * -0.6 + Point{0, 0, 3}, side.Right, 1.2, 3.4,
                      Fitted("stained_glass"));
    }
}

void AddSpire(ObjectBuilder& builder, const Tower& tower, const Surface& slates) {
    const double reach = tower.Half + 0.35, base = tower.Height, top = base + tower.SpireHeight;
    const Point inside{tower.X, 0, base + 1};
    // From a square to eight sides.
    std::vector<Point> foot, waist;
    for (int i = 0; i < 8; ++i) {
        const double angle = (22.5 + 45 * i) * DegreesToRadians;
        waist.push_back({tower.X + 0.8 * reach * std::cos(angle), 0.8 * reach * std::sin(angle), base + 1.8});
    }
    for (const auto& [x, y] : {std::pair{1, 1}, {-1, 1}, {-1, -1}, {1, -1}})
        foot.push_back({tower.X + x * reach, y * reach, base});
    for (int i = 0; i < 4; ++i) {
        const Point &a = foot[i], &b = foot[(i + 1) % 4];
        builder.AddFaceAway(inside, {a, waist[2 * i], waist[2 * i + 1]}, slates);
        builder.AddFaceAway(inside, {a, b, waist[(2 * i + 2) % 8], waist[2 * i + 1]}, slates);
    }
    for (int i = 0; i < 8; ++i)
        builder.AddFaceAway(inside, {waist[i], waist[(i + 1) % 8], {tower.X, 0, top}}, slates);
    builder.AddFaceAway({tower.X, 0, top}, foot, Wood());
}

} // namespace

Object* BuildChurch() {
    ObjectBuilder builder("Church");
    const Surface stone = Textured("stone", 2.6, 2.6), slates = Textured("slates", 3, 3);
    const Gabled nave = {22, 10, 6.5, 5, 4, 0, 0.4, 0.2}, choir = {7, 7, 5, 3.6, 18.5, 0, 0.35, 0.2};
    const Tower tower = {-10, 3.1, 17, 15};

    SubObject* walls = builder.BeginPart("Walls");
    const Walls faces = AddWalls(builder, nave, stone);
    for (int i = 0; i < 5; ++i)
        for (const double side : {-1.0, 1.0}) {
            const double x = -4.3 + 4.0 * i;
            AddLancet(builder, side < 0 ? faces.Front : faces.Back,
                      {side < 0 ? x : x + 1.4, side * nave.Depth / 2, 1.6}, side < 0 ? Right : Left, 1.4, 3.8,
                      Fitted("stained_glass"));
        }
    const Walls choirFaces = AddWalls(builder, choir, stone);
    for (const double offset : {-2.2, -0.6, 1.0})
        AddLancet(builder, choirFaces.Right, {choir.X + choir.Width / 2, offset, 1.5}, Back, 1.2, 4,
                  Fitted("stained_glass"));
    AddTower(builder, tower, stone, true);

    SubObject* roof = builder.BeginPart("Roof");
    AddRoof(builder, nave, slates, true);
    AddRoof(builder, choir, slates, true);
    AddSpire(builder, tower, slates);

    SubObject* details = builder.BeginPart("Details");
    for (int i = 0; i < 6; ++i) // buttresses
        for (const double side : {-1.0, 1.0}) {
            const double x = -6.0 + 4.0 * i, y = side * nave.Depth / 2;
            builder.AddBox({x - 0.3, std::min(y, y + side * 0.9), 0}, {x + 0.3, std::max(y, y + side * 0.9), 3.6},
                           stone);
            builder.AddFaceAway(
                {x, 0, 0},
                {{x - 0.3, y + side * 0.9, 3.6}, {x + 0.3, y + side * 0.9, 3.6}, {x + 0.3, y, 5.2}, {x - 0.3, y, 5.2}},
                slates);
            for (const double edge : {-0.3, 0.3})
                builder.AddFaceAway({x, y, 3},
                                    {{x + edge, y, 3.6}, {x + edge, y + side * 0.9, 3.6}, {x + edge, y, 5.2}}, stone);
        }
    builder.AddBox({tower.X - 3.3, -3.3, tower.Height - 0.3}, {tower.X + 3.3, 3.3, tower.Height}, stone);
    const Surface gold = Smooth({NamedMaterial("Gold", {0.85, 0.65, 0.20}, {0.8, 0.6, 40})});
    const double top = tower.Height + tower.SpireHeight;
    builder.Placement = TranslationMatrix(tower.X, 0, top - 0.3);
    builder.AddTurned({{0, 0, 0}, {0.26, 0, 0.12}, {0.32, 0, 0.32}, {0.26, 0, 0.52}, {0, 0, 0.64}}, 8, gold);
    builder.Placement = IdentityMatrix;
    const Surface flatGold = {gold.Material};
    builder.AddBox({tower.X - 0.06, -0.06, top}, {tower.X + 0.06, 0.06, top + 2}, flatGold);
    builder.AddBox({tower.X - 0.55, -0.06, top + 1.3}, {tower.X + 0.55, 0.06, top + 1.42}, flatGold);

    SubObject* far = builder.BeginPart("Far shape");
    AddWalls(builder, nave, stone);
    AddWalls(builder, choir, stone);
    AddRoof(builder, nave, slates, false);
    AddRoof(builder, choir, slates, false);
    AddTower(builder, tower, stone, false);
    AddSpire(builder, tower, slates);
    AddLevels(builder, walls, roof, details, far, nullptr);
    return CurrentObject();
}
