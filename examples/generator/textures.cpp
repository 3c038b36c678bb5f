#include "textures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

// Sizes are in pixels; each image is one tile of its surface.

namespace {

constexpr int Samples = 3;
constexpr double Pi = 3.14159265358979323846;

double Fraction(double value) {
    return value - std::floor(value);
}

int Whole(double value) {
    return static_cast<int>(std::floor(value));
}

/// 1 inside a rectangle, 0 outside, half a pixel soft.
double Inside(double x, double y, double left, double bottom, double right, double top) {
    const double depth = std::min({x - left, right - x, y - bottom, top - y});
    return std::clamp(depth + 0.5, 0.0, 1.0);
}

double DistanceTo(double x, double y, double centreX, double centreY) {
    return std::hypot(x - centreX, y - centreY);
}

/// Distance from a line between two places.
double FromLine(double x, double y, double x1, double y1, double x2, double y2) {
    const double dx = x2 - x1, dy = y2 - y1;
    const double t = std::clamp(((x - x1) * dx + (y - y1) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return DistanceTo(x, y, x1 + t * dx, y1 + t * dy);
}

// Walls and roofs

Texel Brick(double x, double y) {
    const int row = Whole(y / 16);
    const double along = x / 32 + (row % 2 ? 0.5 : 0);
    const int brick = Whole(along) % 4;
    const double inBrick = Fraction(along) * 32, up = y - row * 16;
    const double joint = std::min({inBrick, 32 - inBrick, up, 16 - up});
    const Colour fired = Mix({0.50, 0.21, 0.15}, {0.72, 0.36, 0.25}, Random(row, brick, 1));
    const double grain = 0.85 + 0.3 * Fractal(x / 8, y / 8, 16, 3, 2);
    return Mix(Colour{0.70, 0.66, 0.60} * (0.8 + 0.3 * Noise(x / 2, y / 2, 64, 3)), fired * grain,
               Step(0.7, 2.0, joint));
}

Texel Stones(double x, double y) {
    const int row = Whole(y / 16);
    const double along = x / 128 * 5 + 0.37 * row;
    const int block = Whole(along) % 5;
    const double left = 0.25 * (Random(row, block, 4) - 0.5);
    const double in = Fraction(along) - left;
    const int number = in < 0 ? (block + 4) % 5 : block;
    const double joint = std::min({std::fabs(in) * 25.6, std::fabs(in - 1) * 25.6, y - row * 16, 16 - (y - row * 16)});
    const Colour block1 = Mix({0.58, 0.55, 0.48}, {0.76, 0.72, 0.62}, Random(row, number, 5));
    return Mix(Colour{0.48, 0.45, 0.40}, block1 * (0.8 + 0.4 * Fractal(x / 8, y / 8, 16, 4, 6)), Step(0.3, 1.6, joint));
}

Texel Plaster(double x, double y) {
    const double stain = Fractal(x / 16, y / 16, 4, 4, 7), grain = Noise(x / 1.5, y / 1.5, 42, 8);
    return Colour{0.93, 0.89, 0.78} * (0.84 + 0.14 * stain + 0.06 * grain);
}

/// A wall of timber and plaster: posts at the edges, rails, and a brace.
Texel Timber(double x, double y) {
    const double edge = std::min(x, 128 - x);
    const double beams[] = {edge - 6,
                            std::fabs(x - 64) - 4,
                            std::min(y, 128 - y) - 6,
                            std::fabs(y - 68) - 4,
                            FromLine(x, y, 8, 6, 60, 64) - 4,
                            FromLine(x, y, 120, 6, 68, 64) - 4};
    const double nearest = *std::min_element(std::begin(beams), std::end(beams));
    const Colour wood = Mix({0.20, 0.13, 0.08}, {0.34, 0.23, 0.15}, Fractal(x / 4, y / 16, 32, 3, 9));
    return Mix(wood, Plaster(x / 2, y / 2).Shade, Step(-0.8, 0.8, nearest));
}

/// Overlapping tiles with rounded ends, in rows.
Colour Tiles(double x, double y, const Colour& dark, const Colour& light, double roundness, int seed) {
    const int row = Whole(y / 16);
    const double along = x / 16 + (row % 2 ? 0.5 : 0);
    const int tile = Whole(along) % 8;
    const double across = Fraction(along) * 2 - 1, up = y - row * 16;
    const double end = roundness * across * across;
    const Colour fired = Mix(dark, light, Random(row, tile, seed));
    const double grain = 0.85 + 0.3 * Fractal(x / 8, y / 8, 16, 3, seed + 1);
    // The lower end lies over the row below and casts its shadow there.
    double shade = up < end ? 0.45 : 0.75 + 0.35 * Step(16, 2, up);
    shade *= up >= end && up < end + 1.5 ? 1.2 : 1;
    shade *= 0.55 + 0.45 * Step(0, 0.12, 1 - std::fabs(across));
    return fired * (grain * shade);
}

Texel RoofTiles(double x, double y) {
    return Tiles(x, y, {0.55, 0.22, 0.14}, {0.80, 0.40, 0.26}, 5, 10);
}

Texel Slates(double x, double y) {
    return Tiles(x, y, {0.27, 0.31, 0.37}, {0.42, 0.46, 0.52}, 1, 12);
}

Texel Planks(double x, double y) {
    const int plank = Whole(x / 16) % 8;
    const double in = x - Whole(x / 16) * 16, grain = Fractal(x / 2 + plank * 5, y / 32, 64, 4, 14);
    const Colour wood = Mix({0.34, 0.22, 0.13}, {0.58, 0.41, 0.26}, 0.6 * grain + 0.4 * Random(plank, 15));
    return wood * (0.4 + 0.6 * Step(0, 1.5, std::min(in, 16 - in)));
}

Texel Window(double x, double y) {
    const Colour frame{0.95, 0.95, 0.92};
    const double pane = std::max({Inside(x, y, 6, 8, 30, 36), Inside(x, y, 34, 8, 58, 36), Inside(x, y, 6, 40, 30, 58),
                                  Inside(x, y, 34, 40, 58, 58)});
    const double sky = Step(0, 64, y + 0.5 * x);
    Colour glass = Mix({0.13, 0.17, 0.22}, {0.45, 0.58, 0.70}, sky * sky);
    const double fold = 0.8 + 0.2 * std::sin(x * 1.3);
    const double curtain = std::max(Step(18, 15, x + (64 - y) * 0.08), Step(46, 49, x - (64 - y) * 0.08));
    glass = Mix(glass, Colour{0.80, 0.72, 0.66} * fold, 0.75 * curtain);
    const Colour sill = frame * (y < 4 ? 0.75 : 1);
    return Mix(sill * (0.93 + 0.07 * Inside(x, y, 2, 2, 62, 62)), glass, pane);
}

Colour Door(double x, double y, const Colour& paint) {
    const double panel = std::max({Inside(x, y, 6, 6, 14, 26), Inside(x, y, 18, 6, 26, 26), Inside(x, y, 6, 31, 14, 48),
                                   Inside(x, y, 18, 31, 26, 48)});
    const double light = Inside(x, y, 6, 52, 26, 59);
    const double edge = Inside(x, y, 2, -9, 30, 62);
    Colour colour = Mix(Colour{0.92, 0.92, 0.88}, paint * (0.92 + 0.08 * Noise(x, y / 8, 32, 16)), edge);
    colour = Mix(colour, paint * 0.72, panel);
    colour = Mix(colour, {0.30, 0.40, 0.48}, light);
    return Mix(colour, {0.85, 0.70, 0.30}, Step(2.2, 1.4, DistanceTo(x, y, 26.5, 29)));
}

Texel GreenDoor(double x, double y) {
    return Door(x, y, {0.12, 0.33, 0.22});
}

Texel RedDoor(double x, double y) {
    return Door(x, y, {0.55, 0.12, 0.12});
}

Texel BarnDoor(double x, double y) {
    const double brace = std::min({FromLine(x, y, 4, 4, 60, 60), std::fabs(y - 6), std::fabs(y - 58), std::fabs(x - 3),
                                   std::fabs(x - 61), std::fabs(x - 32)});
    return Mix(Colour{0.80, 0.78, 0.70}, Planks(x, y).Shade * 0.8, Step(2.0, 3.5, brace));
}

Texel StainedGlass(double x, double y) {
    static constexpr Colour Glass[] = {
        {0.70, 0.15, 0.15}, {0.15, 0.25, 0.65}, {0.80, 0.65, 0.20}, {0.15, 0.45, 0.25}, {0.40, 0.20, 0.55}};
    const double frame = std::min({x, 32 - x, y, 64 - y, std::fabs(x - 16)});
    const Stone piece = StoneAt(x / 8, y / 8, 8, 17);
    const Colour glass = Glass[piece.Number % 5] * (0.55 + 0.45 * Random(piece.Number, 18));
    return Mix({0.20, 0.19, 0.18}, glass, std::min(Step(0.05, 0.2, piece.Depth), Step(1.2, 2.4, frame)));
}

Texel Louvres(double x, double y) {
    const double slat = Fraction(y / 8);
    const double frame = std::min(x, 32 - x);
    return Mix({0.50, 0.47, 0.42}, Colour{0.42, 0.36, 0.30} * (0.25 + 0.75 * slat), Step(2, 3, frame));
}

Texel Clock(double x, double y) {
    const double dx = x - 32, dy = y - 32, radius = std::hypot(dx, dy), hours = std::atan2(dx, dy) / (2 * Pi) * 12;
    const double fromMark = std::fabs(hours - std::round(hours)) * 2 * Pi / 12 * radius;
    double ink = radius > 22 && radius < 28 ? Step(1.8, 1.0, fromMark) : 0;
    ink = std::max(ink, Step(1.8, 1.0, FromLine(x, y, 32, 32, 32 + 18 * std::sin(1.1), 32 + 18 * std::cos(1.1))));
    ink = std::max(ink, Step(2.2, 1.4, FromLine(x, y, 32, 32, 32 - 12 * std::sin(1.0), 32 + 12 * std::cos(1.0))));
    const Colour face = Mix({0.96, 0.94, 0.86}, {0.12, 0.12, 0.20}, ink);
    return Mix(face, {0.78, 0.62, 0.22}, Step(29, 29.8, radius));
}

// Ground and plants

Texel Grass(double x, double y) {
    const double patches = Fractal(x / 32, y / 32, 4, 4, 20), blades = Noise(x / 1.3, y / 3, 98, 21);
    const Colour green = Mix({0.21, 0.36, 0.12}, {0.42, 0.56, 0.22}, 0.6 * patches + 0.4 * blades);
    return Mix(green, {0.60, 0.60, 0.30}, 0.22 * Step(0.5, 0.8, Fractal(x / 16, y / 16, 8, 3, 22)));
}

Texel Wheat(double x, double y) {
    const double row = 0.5 + 0.5 * std::sin(x / 64 * 2 * Pi * 8), ear = Noise(x / 2, y / 4, 32, 23);
    return Mix({0.62, 0.48, 0.20}, {0.92, 0.78, 0.42}, 0.4 * row + 0.6 * ear);
}

Texel Furrows(double x, double y) {
    const double row = 0.5 + 0.5 * std::sin(x / 64 * 2 * Pi * 8 + Noise(x / 16, y / 16, 4, 24));
    return Mix({0.27, 0.18, 0.11}, {0.52, 0.38, 0.25}, 0.6 * row + 0.4 * Fractal(x / 4, y / 4, 16, 3, 25));
}

/// x across the road, y along it.
Texel Road(double x, double y) {
    const double grain = Noise(x / 1.2, y / 1.2, 53, 26), wear = 0.06 * std::cos(x / 64 * 4 * Pi);
    const Colour asphalt = Colour{0.34, 0.34, 0.36} * (0.86 + 0.28 * grain + wear);
    const double line = std::max(Step(1.6, 0.8, std::fabs(x - 32)) * Step(14, 15, y) * Step(50, 49, y),
                                 std::max(Step(1.4, 0.8, std::fabs(x - 4)), Step(1.4, 0.8, std::fabs(x - 60))));
    return Mix(asphalt, {0.90, 0.90, 0.86}, 0.85 * line);
}

Texel Cobbles(double x, double y) {
    const Stone stone = StoneAt(x / 8, y / 8, 8, 27);
    const Colour top = Mix({0.46, 0.44, 0.42}, {0.68, 0.64, 0.58}, Random(stone.Number, 28));
    return Mix({0.28, 0.26, 0.22}, top * (0.85 + 0.3 * Noise(x, y, 64, 29)), Step(0.02, 0.35, stone.Depth));
}

Colour Leaves(double x, double y, int period, const Colour& dark, const Colour& light, int seed) {
    const Stone leaf = StoneAt(x, y, period, seed);
    return Mix(dark, light, 0.65 * Random(leaf.Number, seed) + 0.35 * Step(0, 0.5, leaf.Depth));
}

Texel Hedge(double x, double y) {
    return Leaves(x / 2, y / 2, 32, {0.08, 0.18, 0.06}, {0.26, 0.44, 0.16}, 30);
}

/// A tree seen from the side: a trunk and clumps of leaves within a crown.
struct Tree {
    double CrownX, CrownY, CrownWidth, CrownHeight; // half sizes of an ellipse
    double TrunkWidth;
    int Clumps;
    double ClumpRadius;
    Colour Dark, Light, Bark;
    int Seed;
};

Texel PaintTree(const Tree& tree, double x, double y) {
    const Colour leaf = Leaves(x / 2.5, y / 2.5, 64, tree.Dark, tree.Light, tree.Seed);
    double depth = -9, light = 0;
    for (int i = 0; i < tree.Clumps; ++i) {
        const double angle = 2 * Pi * Random(i, tree.Seed, 1), out = std::sqrt(Random(i, tree.Seed, 2));
        const double radius = tree.ClumpRadius * (0.7 + 0.6 * Random(i, tree.Seed, 3));
        const double clumpX = tree.CrownX + std::cos(angle) * out * (tree.CrownWidth - radius);
        const double clumpY = tree.CrownY + std::sin(angle) * out * (tree.CrownHeight - radius);
        const double inside = radius - DistanceTo(x, y, clumpX, clumpY);
        if (inside > depth) {
            depth = inside;
            // The sun stands at the upper right.
            light = 0.62 + 0.22 * (y - clumpY + x - clumpX) / radius + 0.25 * (y - tree.CrownY) / tree.CrownHeight;
        }
    }
    const double ragged = depth + 2.4 * (Noise(x / 2, y / 2, 64, tree.Seed) - 0.45);
    if (ragged > 0)
        return {leaf * std::clamp(light + 0.2, 0.35, 1.15), Step(0, 0.6, ragged)};
    const double width = tree.TrunkWidth * (1 + 0.8 * Step(14, 0, y));
    const double trunk = y < tree.CrownY + tree.CrownHeight * 0.3 ? width - std::fabs(x - 64) : -1;
    if (trunk > -0.5)
        return {tree.Bark * (0.55 + 0.35 * (x - 64 + width) / width * 0.5 + 0.3 * Noise(x, y / 6, 128, 31)),
                Step(-0.5, 0.5, trunk)};
    // What is cut away keeps the colour of the leaves, so that edges have no fringe.
    return {leaf * 0.8, 0};
}

Texel Oak(double x, double y) {
    static const Tree tree = {64, 78, 60, 48, 5, 70, 13, {0.14, 0.25, 0.08}, {0.42, 0.56, 0.20}, {0.42, 0.33, 0.25},
                              40};
    return PaintTree(tree, x, y);
}

Texel Birch(double x, double y) {
    static const Tree tree = {64, 76, 34, 50, 2.6, 60, 9, {0.30, 0.42, 0.14}, {0.64, 0.74, 0.34}, {0.90, 0.88, 0.84},
                              50};
    return PaintTree(tree, x, y);
}

Texel Pine(double x, double y) {
    const double up = (y - 14) / 112, storey = Fraction(up * 7);
    const double reach = (1 - up) * 46 * (0.62 + 0.38 * (1 - storey)) + 4 * (Noise(x / 3, y / 3, 43, 61) - 0.5);
    const double out = std::fabs(x - 64);
    const Colour needles = Leaves(x / 2, y / 2.5, 64, {0.05, 0.14, 0.09}, {0.20, 0.36, 0.20}, 60);
    if (up > 0 && up < 1 && out < reach)
        return {needles * (0.75 + 0.35 * (1 - storey) + 0.2 * (x - 64) / 46), Step(0, 1.2, reach - out)};
    if (y < 20 && out < 3.5)
        return {Colour{0.34, 0.24, 0.17} * (0.8 + 0.4 * Noise(x, y / 5, 128, 62)), 1};
    return {needles * 0.8, 0};
}

// The vehicle

Texel Tread(double x, double y) {
    const double groove = std::min({std::fabs(x - 16), std::fabs(x - 32), std::fabs(x - 48)});
    const double slot = Fraction(y / 8 + std::fabs(x - 32) / 16);
    const double rubber = 0.13 + 0.05 * Noise(x, y, 64, 70);
    const double depth = std::min(Step(1, 2, groove), Step(0.12, 0.2, std::min(slot, 1 - slot)));
    return Colour{1, 1, 1.04} * (rubber * (0.35 + 0.65 * depth));
}

/// A wheel from outside: tyre, rim with holes, and cap.
Texel Wheel(double x, double y) {
    const double dx = x - 64, dy = y - 64, radius = std::hypot(dx, dy), angle = std::atan2(dy, dx);
    Colour colour = Colour{0.12, 0.12, 0.13} * (radius > 52 && radius < 54 ? 1.6 : 1);
    const double shine = 0.75 + 0.25 * std::sin(angle * 2 + 0.8);
    colour = Mix(Colour{0.82, 0.83, 0.86} * shine, colour, Step(44, 45, radius));
    const double turn = Fraction(angle / (2 * Pi) * 10) - 0.5;
    const double hole = 4.6 - std::hypot(turn * 2 * Pi / 10 * 33, radius - 33);
    colour = Mix(colour, {0.10, 0.10, 0.11}, Step(-0.5, 0.5, hole));
    colour = Mix(Colour{0.90, 0.91, 0.94} * (0.75 + 0.25 * Step(0, 18, dx + dy + 18)), colour, Step(17, 18, radius));
    return radius > 16.5 && radius < 18.5 ? colour * 0.6 : colour;
}

/// The side of the car, front to the right: joints of the door, handle, sill and a line along it.
Texel BodySide(double x, double y) {
    Colour paint{1, 1, 1};
    const double door = std::max(Inside(x, y, 108, 9, 184, 70), 0.0), inner = Inside(x, y, 109.4, 10.4, 182.6, 70);
    paint = paint * (1 - 0.72 * (door - inner));
    paint = Mix(paint, {0.86, 0.86, 0.88}, Step(2.2, 1.4, FromLine(x, y, 116, 48, 126, 48)));
    paint = paint * (1 - 0.5 * Step(1.4, 0.8, std::fabs(y - 50.6)) * Step(116, 118, x) * Step(126, 124, x));
    return paint * (1 - 0.16 * Step(1.5, 0.5, std::fabs(y - 40)));
}

Texel Grille(double x, double y) {
    const double bar = std::fabs(Fraction(y / 8) - 0.5) * 8, frame = std::min({x, 128 - x, y, 32 - y});
    const double metal = std::max(Step(1.6, 2.4, bar), Step(2.5, 1.5, frame));
    return Mix({0.05, 0.05, 0.06}, Colour{0.80, 0.82, 0.86} * (0.7 + 0.3 * Step(0, 32, y)), metal);
}

/// A lamp's glass: rings and ribs in a metal frame.
Colour Lamp(double x, double y, const Colour& glass) {
    const double radius = DistanceTo(x, y, 16, 16), rib = 0.85 + 0.15 * std::sin(x * Pi / 2);
    const Colour lit = Mix(glass, {1, 1, 1}, 0.6 * Step(7, 2, DistanceTo(x, y, 19, 20)));
    return Mix(lit * rib, Colour{0.80, 0.81, 0.84} * (0.7 + 0.3 * y / 32), Step(13, 14, radius));
}

Texel HeadLamp(double x, double y) {
    return Lamp(x, y, {0.80, 0.84, 0.86});
}

Texel TailLamp(double x, double y) {
    return Lamp(x, y, {0.75, 0.06, 0.05});
}

Texel Plate(double x, double y) {
    // Letters of three by five dots.
    static constexpr const char* Rows[] = {"#.#.###.###.#.#.###...##..###", "#.#..#..#.#.#.#.#.#....#....#",
                                           "##...#..##..#.#.#.#....#..###", "#.#..#..#.#.#.#.#.#....#..#..",
                                           "#.#.###.#.#..#..###...###.###"};
    const int column = Whole((x - 6) / 4), row = 4 - Whole((y - 6) / 4);
    const bool ink = x >= 6 && y >= 6 && row >= 0 && row < 5 && column < 29 && Rows[row][column] == '#';
    const double frame = std::min({x, 128 - x, y, 32 - y});
    return Mix(ink ? Colour{0.08, 0.08, 0.10} : Colour{0.94, 0.94, 0.88}, {0.15, 0.15, 0.16}, Step(2.4, 1.6, frame));
}

Texel Cloth(double x, double y) {
    const double rib = 0.5 + 0.5 * std::sin(x / 32 * 2 * Pi * 8), weave = Noise(x, y, 32, 71);
    return Mix({0.30, 0.27, 0.24}, {0.46, 0.42, 0.37}, 0.3 * rib + 0.7 * weave);
}

struct NamedImage {
    const char* Name;
    int Width, Height, Channels;
    Texel (*Paint)(double x, double y);
};

constexpr NamedImage Images[] = {
    {"brick", 128, 128, 3, Brick},      {"stone", 128, 128, 3, Stones},      {"plaster", 64, 64, 3, Plaster},
    {"timber", 128, 128, 3, Timber},    {"tiles", 128, 128, 3, RoofTiles},   {"slates", 128, 128, 3, Slates},
    {"planks", 128, 64, 3, Planks},     {"window", 64, 64, 3, Window},       {"green_door", 32, 64, 3, GreenDoor},
    {"red_door", 32, 64, 3, RedDoor},   {"barn_door", 64, 64, 3, BarnDoor},  {"stained_glass", 32, 64, 3, StainedGlass},
    {"louvres", 32, 64, 3, Louvres},    {"clock", 64, 64, 3, Clock},         {"grass", 128, 128, 3, Grass},
    {"wheat", 64, 64, 3, Wheat},        {"furrows", 64, 64, 3, Furrows},     {"road", 64, 64, 3, Road},
    {"cobbles", 64, 64, 3, Cobbles},    {"hedge", 64, 64, 3, Hedge},         {"oak", 128, 128, 4, Oak},
    {"birch", 128, 128, 4, Birch},      {"pine", 128, 128, 4, Pine},         {"tread", 64, 64, 3, Tread},
    {"wheel", 128, 128, 3, Wheel},      {"body_side", 256, 64, 3, BodySide}, {"grille", 128, 32, 3, Grille},
    {"head_lamp", 32, 32, 3, HeadLamp}, {"tail_lamp", 32, 32, 3, TailLamp},  {"plate", 128, 32, 3, Plate},
    {"cloth", 32, 32, 3, Cloth},
};

} // namespace

bool WriteTextures(const std::string& directory) {
    for (const NamedImage& image : Images) {
        const std::string path = directory + "/" + image.Name + ".rgb";
        if (!Image(image.Width, image.Height, image.Channels, Samples, image.Paint).Write(path)) {
            std::fprintf(stderr, "%s cannot be written\n", path.c_str());
            return false;
        }
    }
    return true;
}

Colour MeanColour(const std::string& name) {
    for (const NamedImage& image : Images) {
        if (name != image.Name)
            continue;
        Colour sum{};
        double opacity = 0;
        for (int y = 0; y < image.Height; ++y)
            for (int x = 0; x < image.Width; ++x) {
                const Texel texel = image.Paint(x + 0.5, y + 0.5);
                sum = {sum.Red + texel.Shade.Red * texel.Opacity, sum.Green + texel.Shade.Green * texel.Opacity,
                       sum.Blue + texel.Shade.Blue * texel.Opacity};
                opacity += texel.Opacity;
            }
        return sum * (1 / opacity);
    }
    return {0.6, 0.6, 0.6};
}
