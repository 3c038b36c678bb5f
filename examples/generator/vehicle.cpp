#include "vehicle.h"

#include "model_builder.h"

#include "store/accessors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double End = 1.95;                                       // of the body, along x
constexpr double FrontAxle = 1.22, RearAxle = -1.22, Track = 0.70; // middle of the wheels
constexpr double WheelRadius = 0.31, ArchRadius = 0.38, Sill = 0.22;

/// The body seen from above and from the side.
constexpr double PlanPower = 9, PlanRoot = 0.3;

double HalfWidth(double x) {
    const double out = std::min(1.0, std::fabs(x / End));
    return 0.80 * std::pow(1 - std::pow(out, PlanPower), PlanRoot);
}

double Top(double x) {
    const double bonnet = 0.70 + 0.20 * Step(1.95, 0.7, x), boot = 0.80 + 0.12 * Step(-2.1, -1.1, x);
    const double level = x > 0 ? bonnet : boot, rounding = 1 - std::pow(std::fabs(x / End), 9);
    return 0.50 + (level - 0.50) * std::pow(std::max(0.0, rounding), 0.4);
}

double Bottom(double x) {
    double bottom = Sill + 0.14 * std::pow(std::fabs(x / End), 8);
    for (const double axle : {FrontAxle, RearAxle}) {
        const double across = ArchRadius * ArchRadius - (x - axle) * (x - axle);
        if (across >= 0)
            bottom = std::max(bottom, WheelRadius + std::sqrt(across));
    }
    return bottom;
}

/// Where the body is cut across, from the front to the rear.
std::vector<double> Stations() {
    std::vector<double> stations;
    for (int i = 0; i <= 24; ++i)
        stations.push_back(End * 0.9999 * std::cos(Pi * i / 24));
    for (const double axle : {FrontAxle, RearAxle})
        for (int i = 0; i <= 12; ++i)
            stations.push_back(axle + ArchRadius * 0.99999 * std::cos(Pi * i / 12));
    std::sort(stations.rbegin(), stations.rend());
    stations.erase(std::unique(stations.begin(), stations.end(), [](double a, double b) { return a - b < 0.012; }),
                   stations.end());
    return stations;
}

/// Half of a cut: from the bottom of the side to the middle of the top.
constexpr int SidePoints = 5, CutPoints = 11;

std::vector<Point> CutAt(double x, double side) {
    const double width = HalfWidth(x), top = Top(x), bottom = Bottom(x);
    const double shoulder = std::max(bottom + 0.02, top - 0.17);
    std::vector<Point> cut;
    for (int i = 0; i < SidePoints; ++i) {
        const double up = static_cast<double>(i) / (SidePoints - 1), z = bottom + (shoulder - bottom) * up;
        const double bulge = 1 - 0.06 * std::pow((z - 0.52) / 0.3, 2);
        cut.push_back({x, side * width * bulge, z});
    }
    const double edge = std::fabs(cut.back().Y);
    for (int i = SidePoints; i < CutPoints; ++i) {
        const double angle = Pi / 2 * (i - SidePoints + 1) / (CutPoints - SidePoints);
        cut.push_back({x, side * edge * std::pow(std::cos(angle), 0.55),
                       shoulder + (top - shoulder) * std::pow(std::sin(angle), 0.8)});
    }
    cut.back().Y = 0;
    return cut;
}

/// The opening of the cabin in the top of the body.
bool IsOpen(double x, double y) {
    return x > -1.0 && x < 0.62 && std::fabs(y) < 0.66;
}

void AddShell(ObjectBuilder& builder, const Surface& paint) {
    const std::vector<double> stations = Stations();
    const Point middle{0, 0, 0.45};
    Surface flank = paint;
    flank.Texture = NamedTexture("body_side");
    const Surface dark = Smooth({NamedMaterial("Underside", {0.07, 0.07, 0.08})});
    const auto onImage = [](const Point& p) { return Corner{p, (p.X + End) / (2 * End), (p.Z - Sill) / 0.66}; };
    for (const double side : {-1.0, 1.0})
        for (std::size_t i = 0; i + 1 < stations.size(); ++i) {
            const std::vector<Point> a = CutAt(stations[i], side), b = CutAt(stations[i + 1], side);
            const double x = (stations[i] + stations[i + 1]) / 2;
            for (int k = 0; k + 1 < CutPoints; ++k) {
                if (k >= SidePoints && IsOpen(x, (a[k].Y + a[k + 1].Y) / 2))
                    continue;
                const bool showsDoor = k + 1 < SidePoints + 1 && std::fabs(x) < 1.6;
                builder.AddMappedFaceAway({x, 0, std::min(0.45, a[k].Z)},
                                          {onImage(a[k]), onImage(b[k]), onImage(b[k + 1]), onImage(a[k + 1])},
                                          showsDoor ? flank : paint);
            }
            // Into the wheel house, or under the car.
            const Point inner = {0, -side * 0.45, 0};
            builder.AddFaceAway({x, 0, 2}, {a[0], b[0], b[0] + inner, a[0] + inner}, dark);
        }
    for (const double end : {stations.front(), stations.back()}) {
        std::vector<Point> cap = CutAt(end, 1), other = CutAt(end, -1);
        cap.insert(cap.end(), other.rbegin() + 1, other.rend());
        builder.AddFaceAway(middle, cap, paint);
    }
    builder.AddFaceAway(middle, {{1.7, -0.5, 0.24}, {1.7, 0.5, 0.24}, {-1.7, 0.5, 0.24}, {-1.7, -0.5, 0.24}},
                        {dark.Material});
}

// The cabin: rings of points, each a rounded rectangle, from the belt to the roof.

constexpr int Around = 48;

struct Ring {
    double Z, Rear, Front, HalfWidth;
    double Roundness; // exponent of the outline
};

Point OnRing(const Ring& ring, int column) {
    const double angle = 2 * Pi * column / Around, c = std::cos(angle), s = std::sin(angle), e = 2 / ring.Roundness;
    const double along = std::copysign(std::pow(std::fabs(c), e), c),
                 across = std::copysign(std::pow(std::fabs(s), e), s);
    const double middle = (ring.Front + ring.Rear) / 2, half = (ring.Front - ring.Rear) / 2;
    return {middle + half * along, ring.HalfWidth * across, ring.Z};
}

/// Whether glass is in a column of the cabin: not in the six pillars.
bool IsGlass(int column) {
    const int fromFront = std::min(column, Around - 1 - column); // 0 in front, 23 behind
    return !(fromFront == 6 || fromFront == 12 || (fromFront >= 17 && fromFront <= 18));
}

constexpr Ring Cabin[] = {{0.76, -1.30, 0.88, 0.735, 4.5}, {0.90, -1.22, 0.78, 0.725, 4.5},
                          {1.10, -1.12, 0.57, 0.68, 4.5},  {1.32, -0.99, 0.32, 0.62, 4.5},
                          {1.40, -0.92, 0.20, 0.585, 4.2}, {1.445, -0.82, 0.08, 0.51, 4},
                          {1.475, -0.60, -0.10, 0.34, 3.5}};
constexpr Point RoofTop{-0.36, 0, 1.487};
constexpr int FirstGlassRow = 1, LastGlassRow = 2;

/// Its painted part, with the middle of the roof, or its glass.
void AddCabin(ObjectBuilder& builder, const Surface& surface, bool glass) {
    for (int row = 0; row + 1 < static_cast<int>(std::size(Cabin)); ++row)
        for (int column = 0; column < Around; ++column) {
            const bool isGlass = row >= FirstGlassRow && row <= LastGlassRow && IsGlass(column);
            if (isGlass != glass)
                continue;
            const int next = (column + 1) % Around;
            builder.AddFaceAway({-0.3, 0, 0.9},
                                {OnRing(Cabin[row], column), OnRing(Cabin[row], next), OnRing(Cabin[row + 1], next),
                                 OnRing(Cabin[row + 1], column)},
                                surface);
        }
    const Ring& last = Cabin[std::size(Cabin) - 1];
    for (int column = 0; column < Around && !glass; ++column)
        builder.AddFace({OnRing(last, column), OnRing(last, (column + 1) % Around), RoofTop}, surface);
}

struct Seat {
    double X, Y, HalfWidth, BackHeight;
};

void AddSeat(ObjectBuilder& builder, const Seat& seat, const Surface& cloth) {
    builder.AddBox({seat.X - 0.22, seat.Y - seat.HalfWidth, 0.36}, {seat.X + 0.26, seat.Y + seat.HalfWidth, 0.54},
                   cloth);
    const Matrix before = builder.Placement;
    MultMatrix(RollMatrix(-14), TranslationMatrix(seat.X - 0.22, seat.Y, 0.46), builder.Placement);
    builder.AddBox({-0.12, -seat.HalfWidth, 0}, {0.02, seat.HalfWidth, seat.BackHeight}, cloth);
    builder.Placement = before;
}

void AddInterior(ObjectBuilder& builder) {
    const Surface dark = {NamedMaterial("Trim", {0.16, 0.15, 0.15})}, cloth = Textured("cloth", 0.2, 0.2);
    const double x0 = -1.12, x1 = 0.70, y = 0.63, z0 = 0.32, z1 = 0.84;
    const Point middle{-0.2, 0, 0.6};
    builder.AddFaceAway({0, 0, -9}, {{x0, -y, z0}, {x1, -y, z0}, {x1, y, z0}, {x0, y, z0}}, dark);
    const auto inward = [&](const std::vector<Point>& wall) {
        builder.AddFaceAway((wall[0] + wall[2]) * 0.5 + ((wall[0] + wall[2]) * 0.5 - middle), wall, dark);
    };
    for (const double side : {-y, y})
        inward({{x0, side, z0}, {x1, side, z0}, {x1, side, z1}, {x0, side, z1}});
    for (const double end : {x0, x1})
        inward({{end, -y, z0}, {end, y, z0}, {end, y, z1}, {end, -y, z1}});
    builder.AddBox({0.40, -0.60, 0.66}, {0.68, 0.60, 0.87}, dark);
    for (const Seat& seat : {Seat{0.0, -0.32, 0.23, 0.56}, Seat{0.0, 0.32, 0.23, 0.56}, Seat{-0.70, 0, 0.56, 0.44}})
        AddSeat(builder, seat, cloth);
    // The steering wheel, on the left.
    MultMatrix(RollMatrix(-65), TranslationMatrix(0.33, 0.33, 0.86), builder.Placement);
    const Surface rim = Smooth({NamedMaterial("Rubber", {0.10, 0.10, 0.11}, {0.9, 0.2, 20})});
    builder.AddTurned(
        {{0.155, 0, -0.015}, {0.185, 0, -0.015}, {0.185, 0, 0.015}, {0.155, 0, 0.015}, {0.155, 0, -0.015}}, 16, rim);
    builder.AddBox({-0.16, -0.015, -0.005}, {0.16, 0.015, 0.005}, dark);
    builder.Placement = IdentityMatrix;
}

void AddWheel(ObjectBuilder& builder, double x, double side) {
    // Outward along z, then turned to the side.
    MultMatrix(PitchMatrix(side > 0 ? -90 : 90), TranslationMatrix(x, side * Track, WheelRadius), builder.Placement);
    constexpr int sides = 24;
    const Surface rubber = Smooth({NamedMaterial("Rubber", {0.10, 0.10, 0.11}, {0.9, 0.2, 20})}, 1);
    Surface tread = Smooth(Textured("tread", 1.0 / 14, 0.14), 1);
    tread.Plain = rubber.Material;
    builder.AddTurned({{0.14, 0, -0.09}, {0.28, 0, -0.09}, {0.305, 0, -0.07}}, sides, rubber);
    builder.AddTurned({{0.305, 0, -0.07}, {WheelRadius, 0, -0.04}, {WheelRadius, 0, 0.04}, {0.305, 0, 0.07}}, sides,
                      tread);
    builder.AddTurned({{0.305, 0, 0.07}, {0.28, 0, 0.09}}, sides, rubber);
    std::vector<Corner> disc;
    for (int i = 0; i < sides; ++i) {
        const double c = std::cos(2 * Pi * i / sides), s = std::sin(2 * Pi * i / sides);
        disc.push_back({{0.28 * c, 0.28 * s, 0.09}, 0.5 + 0.45 * c, 0.5 + 0.45 * s});
    }
    Surface wheel = Textured("wheel", 0, 0);
    wheel.Material = NamedMaterial("Polished", {0.8, 0.8, 0.8}, {0.9, 0.5, 30});
    builder.AddMappedFace(disc, wheel);
    builder.Placement = IdentityMatrix;
}

/// A band around the front or the rear, a little outside the body.
void AddBand(ObjectBuilder& builder, double end, double reach, double low, double high, double outside,
             const Surface& surface) {
    constexpr int steps = 16;
    const auto at = [&](int i, double z, double out) {
        const double y = reach * (2.0 * i / steps - 1);
        // The body's outline solved for x.
        const double x = End * std::pow(1 - std::pow(std::min(1.0, std::fabs(y) / 0.80), 1 / PlanRoot), 1 / PlanPower);
        return Corner{
            {end * (x + out), y * (1 + out / 0.8), z}, static_cast<double>(i) / steps, (z - low) / (high - low)};
    };
    for (int i = 0; i < steps; ++i) {
        const Point inside{0, 0, (low + high) / 2};
        builder.AddMappedFaceAway(
            inside, {at(i, low, outside), at(i + 1, low, outside), at(i + 1, high, outside), at(i, high, outside)},
            surface);
        builder.AddMappedFaceAway(
            {0, 0, low - 9},
            {at(i, high, outside), at(i + 1, high, outside), at(i + 1, high, -0.03), at(i, high, -0.03)}, surface);
    }
}

/// A round lamp that shines along x towards `end`.
void AddLamp(ObjectBuilder& builder, const Point& place, double end, double radius, const char* image,
             const Surface& chrome) {
    MultMatrix(RollMatrix(end > 0 ? 90 : -90), TranslationMatrix(place.X, place.Y, place.Z), builder.Placement);
    constexpr int sides = 16;
    builder.AddTurned({{radius * 1.12, 0, -0.12}, {radius * 1.12, 0, 0}, {radius, 0, 0.015}}, sides, chrome);
    const Surface glass = Smooth(Textured(image, 0, 0));
    const auto at = [&](double share, double height, int side) {
        const double c = std::cos(2 * Pi * side / sides), s = std::sin(2 * Pi * side / sides);
        return Corner{{radius * share * c, radius * share * s, height}, 0.5 + 0.5 * share * c, 0.5 + 0.5 * share * s};
    };
    for (int i = 0; i < sides; ++i) {
        builder.AddMappedFace({at(1, 0.015, i), at(1, 0.015, i + 1), at(0.6, 0.035, i + 1), at(0.6, 0.035, i)}, glass);
        builder.AddMappedFace({at(0.6, 0.035, i), at(0.6, 0.035, i + 1), at(0, 0.042, 0)}, glass);
    }
    builder.Placement = IdentityMatrix;
}

} // namespace

Object* BuildVehicle(const char* name) {
    ObjectBuilder builder(name);
    const Surface paint = Smooth({NamedMaterial("Red paint", {0.62, 0.05, 0.06}, {1.1, 0.5, 50})});
    const Surface chrome = Smooth({NamedMaterial("Chrome", {0.62, 0.64, 0.68}, {0.6, 0.9, 60})});
    SubObject* body = builder.BeginPart("Body");
    AddShell(builder, paint);
    AddCabin(builder, paint, false);
    SubObject* interior = builder.BeginPart("Interior");
    AddInterior(builder);
    SubObject* wheels = builder.BeginPart("Wheels");
    for (const double axle : {FrontAxle, RearAxle})
        for (const double side : {-1.0, 1.0})
            AddWheel(builder, axle, side);
    SubObject* trim = builder.BeginPart("Trim");
    for (const double end : {-1.0, 1.0})
        AddBand(builder, end, 0.74, 0.36, 0.47, 0.06, chrome);
    AddBand(builder, 1, 0.42, 0.50, 0.60, 0.006, Smooth(Textured("grille", 0, 0)));
    for (const double end : {-1.0, 1.0})
        builder.AddMappedFaceAway({0, 0, 0.4},
                                  {{{end * 2.03, -end * 0.26, 0.36}, 0, 0},
                                   {{end * 2.03, end * 0.26, 0.36}, 1, 0},
                                   {{end * 2.03, end * 0.26, 0.47}, 1, 1},
                                   {{end * 2.03, -end * 0.26, 0.47}, 0, 1}},
                                  Textured("plate", 0, 0));
    SubObject* lights = builder.BeginPart("Lights");
    for (const double side : {-1.0, 1.0}) {
        AddLamp(builder, {1.86, side * 0.55, 0.615}, 1, 0.10, "head_lamp", chrome);
        AddLamp(builder, {-1.87, side * 0.56, 0.62}, -1, 0.08, "tail_lamp", chrome);
    }
    SubObject* glass = builder.BeginPart("Glass");
    AddCabin(builder, Smooth({NamedMaterial("Glass", {0.35, 0.45, 0.50}, {0.8, 0.9, 60, 0.35})}), true);
    builder.AddLevel("Near", 60, {body, interior, wheels, trim, lights, glass});
    builder.AddLevel("Far", 400, {body, wheels, lights, glass});
    return CurrentObject();
}
