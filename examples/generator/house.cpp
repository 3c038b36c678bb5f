#include "house.h"

#include "model_builder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace {

constexpr double FarAway = 1e6;

SubObject* AddHouse(ObjectBuilder& builder, const Surface& wall, const Surface& roof) {
    constexpr double x = 3, y = 2, eaves = 2.5, ridge = 4;
    const Point low[] = {{-x, -y, 0}, {x, -y, 0}, {x, y, 0}, {-x, y, 0}};
    const Point high[] = {{-x, -y, eaves}, {x, -y, eaves}, {x, y, eaves}, {-x, y, eaves}};
    const Point right = {x, 0, ridge}, left = {-x, 0, ridge};
    SubObject* const part = builder.BeginPart("House");
    for (int side = 0; side < 4; ++side) {
        const int next = (side + 1) % 4;
        builder.AddFace({low[side], low[next], high[next], high[side]}, wall);
    }
    builder.AddFace({high[1], high[2], right}, wall);
    builder.AddFace({high[3], high[0], left}, wall);
    builder.AddFace({high[0], high[1], right, left}, roof);
    builder.AddFace({high[2], high[3], left, right}, roof);
    return part;
}

SubObject* AddTower(ObjectBuilder& builder, const Surface& wall) {
    constexpr int sides = 8;
    constexpr double middle = 6, radius = 1.5, height = 5;
    const auto at = [](double corner, double z) {
        const double angle = 2 * std::numbers::pi * (corner + 0.5) / sides;
        return Point{middle + radius * std::cos(angle), radius * std::sin(angle), z};
    };
    SubObject* const part = builder.BeginPart("Tower");
    for (int side = 0; side < sides; ++side)
        builder.AddFace({at(side, 0), at(side + 1, 0), at(side + 1, height), at(side, height)}, wall);
    return part;
}

SubObject* AddPath(ObjectBuilder& builder, const Surface& surface) {
    constexpr double half = 0.6;
    const Point way[] = {{-5, -4, 0}, {-2, -4, 0}, {1, -4, 0}, {3, -5, 0}, {4, -7, 0}, {4, -9, 0}};
    const auto count = static_cast<int>(std::size(way));
    const auto beside = [&](int i, double side) {
        const Point along = Unit(way[std::min(i + 1, count - 1)] - way[std::max(i - 1, 0)]);
        return way[i] + Point{-along.Y, along.X, 0} * (side * half);
    };
    SubObject* const part = builder.BeginPart("Path");
    for (int i = 0; i + 1 < count; ++i)
        builder.AddFace({beside(i, -1), beside(i + 1, -1), beside(i + 1, 1), beside(i, 1)}, surface);
    return part;
}

} // namespace

void BuildHouse() {
    ObjectBuilder builder("House");
    const Surface wall = {NamedMaterial("Wall", {0.86, 0.84, 0.78})};
    SubObject* const house = AddHouse(builder, wall, {NamedMaterial("Roof", {0.78, 0.42, 0.32})});
    SubObject* const tower = AddTower(builder, wall);
    SubObject* const path = AddPath(builder, {NamedMaterial("Path", {0.72, 0.7, 0.66})});
    builder.AddLevel("All", FarAway, {house, tower, path});
    for (const char* image : {"cobbles", "tiles", "brick"})
        NamedTexture(image);
    SaveView(false, {{2, -2, 0.8}, 19, 28, 26, 0});
}
