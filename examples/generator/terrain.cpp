#include "terrain.h"

#include "model_builder.h"

#include "store/accessors.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int Columns = 250, Rows = 200; // of squares of two triangles
constexpr double Square = 8;             // metres
constexpr double WaterLevel = 0;
constexpr char TextureName[] = "terrain";

/// Before the water covers it.
double Relief(double x, double y) {
    const double u = x / 560 + 40, v = y / 560 + 40;
    double ridges = 0, height = 1, weight = 1;
    for (int octave = 0; octave < 6; ++octave) {
        const double scale = 1 << octave;
        const double noise = Noise(u * scale, v * scale, 80 << octave, 90 + octave);
        double ridge = 1 - std::fabs(2 * noise - 1);
        ridge *= ridge;
        ridges += ridge * height * weight;
        weight = std::clamp(ridge * 1.6, 0.0, 1.0);
        height *= 0.43;
    }
    // A lake in front of the range.
    const double fromLake = std::hypot((x + 60) / 640, (y + 430) / 380);
    const double range = 40 + 250 * Step(-420, 560, y);
    return range * (0.75 * ridges - 0.30) + 26 - 75 * Step(1.15, 0.35, fromLake);
}

double Height(double x, double y) {
    return std::max(WaterLevel, Relief(x, y));
}

/// Of the ground: 1 is level, 0 upright.
double Levelness(double x, double y) {
    constexpr double d = Square / 2;
    const double dx = (Height(x + d, y) - Height(x - d, y)) / (2 * d),
                 dy = (Height(x, y + d) - Height(x, y - d)) / (2 * d);
    return 1 / std::sqrt(1 + dx * dx + dy * dy);
}

/// What covers the ground, from the lowest to the highest.
enum Cover { Water, Sand, Meadow, Forest, Rock, Snow, CoverCount };

struct CoverLook {
    const char* Name;
    Colour Dark, Light;
    Look Shine;
};

const CoverLook Looks[CoverCount] = {
    {"Water", {0.10, 0.25, 0.36}, {0.16, 0.36, 0.48}, {0.9, 0.45, 50}},
    {"Sand", {0.62, 0.54, 0.38}, {0.78, 0.71, 0.53}, {}},
    {"Meadow", {0.28, 0.42, 0.14}, {0.47, 0.58, 0.24}, {}},
    {"Forest", {0.09, 0.20, 0.08}, {0.20, 0.33, 0.13}, {}},
    {"Rock", {0.36, 0.33, 0.30}, {0.58, 0.55, 0.50}, {}},
    {"Snow", {0.86, 0.89, 0.94}, {0.98, 0.98, 1.00}, {0.9, 0.3, 20}},
};

/// By height and slope, with borders that wander.
Cover CoverAt(double x, double y) {
    const double height = Relief(x, y), level = Levelness(x, y);
    const double wander = Fractal(x / 60 + 50, y / 60 + 50, 100, 4, 120) - 0.5;
    if (height < WaterLevel)
        return Water;
    if (height < 5 + 8 * wander)
        return Sand;
    if (level > 0.62 + 0.2 * wander && height > 140 + 90 * wander)
        return Snow;
    if (level < 0.80 + 0.16 * wander || height > 108 + 60 * wander)
        return Rock;
    return wander > 0.02 && height > 14 ? Forest : Meadow;
}

/// The colours of the ground at one place of the image.
Texel Ground(double x, double y) {
    const CoverLook& look = Looks[CoverAt(x, y)];
    const double grain = Fractal(x / 9 + 300, y / 9 + 300, 1000, 3, 130);
    double depth = 1;
    if (const double relief = Relief(x, y); relief < WaterLevel)
        depth = Step(-14, 0, relief); // shallows are lighter
    else
        depth = grain;
    return Mix(look.Dark, look.Light, depth);
}

} // namespace

bool WriteTerrainTexture(const std::string& directory) {
    constexpr int size = 512, samples = 2;
    const Image image(size, size, 3, samples, [](double x, double y) {
        return Ground((x / size - 0.5) * Columns * Square, (y / size - 0.5) * Rows * Square);
    });
    const std::string path = directory + "/" + TextureName + ".rgb";
    const bool written = image.Write(path);
    if (!written)
        std::fprintf(stderr, "%s cannot be written\n", path.c_str());
    return written;
}

void BuildTerrain() {
    ObjectBuilder builder("Terrain");
    SubObject* land = builder.BeginPart("Land");
    Surface surfaces[CoverCount];
    for (int cover = 0; cover < CoverCount; ++cover) {
        const CoverLook& look = Looks[cover];
        Surface& surface = surfaces[cover] = Smooth({});
        surface.Plain = NamedMaterial(look.Name, Mix(look.Dark, look.Light, 0.5), look.Shine);
        surface.Material = look.Shine.Specular > 0
                               ? NamedMaterial(std::string("Shining ") + look.Name, {0.85, 0.85, 0.85}, look.Shine)
                               : Untinted();
        surface.Texture = NamedTexture(TextureName);
        surface.Texture->ClampS = surface.Texture->ClampT = 1;
    }
    std::vector<Corner> corners;
    for (int row = 0; row <= Rows; ++row)
        for (int column = 0; column <= Columns; ++column) {
            const double x = (column - Columns / 2) * Square, y = (row - Rows / 2) * Square;
            corners.push_back(
                {{x, y, Height(x, y)}, static_cast<double>(column) / Columns, static_cast<double>(row) / Rows});
        }
    const auto add = [&](const Corner& a, const Corner& b, const Corner& c) {
        const Point middle = (a.Place + b.Place + c.Place) * (1.0 / 3);
        builder.AddMappedFace({a, b, c}, surfaces[CoverAt(middle.X, middle.Y)]);
    };
    for (int row = 0; row < Rows; ++row)
        for (int column = 0; column < Columns; ++column) {
            const Corner* const lower = &corners[row * (Columns + 1) + column];
            const Corner* const upper = lower + Columns + 1;
            if ((row + column) % 2) {
                add(lower[0], lower[1], upper[1]);
                add(lower[0], upper[1], upper[0]);
            } else {
                add(lower[0], lower[1], upper[0]);
                add(lower[1], upper[1], upper[0]);
            }
        }
    builder.AddLevel("Everywhere", 1000000, {land});
    SaveView(false, {{0, -40, 30}, 1800, -28, 24, -40});
}
