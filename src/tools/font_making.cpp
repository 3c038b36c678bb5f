#include "tools/font_making.h"

#include "platform/font_outlines.h"
#include "platform/outline_filling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace {

using gl::OutlinePoint;

/// Coordinates are rounded to this part of an em, so that points that nearly fall together do, and none is left
/// on the line between its neighbours.
constexpr double Grid = 4096;
/// How far an edge may run beside its curve, ems: a twentieth of a pixel at 54 pixels, or more where a letter would
/// have too many triangles.
constexpr double FinestTolerance = 0.001, Coarsening = 1.25;

OutlinePoint Rounded(const OutlinePoint& point) {
    return {std::round(point.X * Grid), std::round(point.Y * Grid)};
}

double Across(const OutlinePoint& a, const OutlinePoint& b, const OutlinePoint& c) {
    return (b.X - a.X) * (c.Y - a.Y) - (b.Y - a.Y) * (c.X - a.X);
}

using EdgeKey = std::pair<std::pair<double, double>, std::pair<double, double>>;

EdgeKey KeyOf(const OutlinePoint& from, const OutlinePoint& to) {
    return {{from.X, from.Y}, {to.X, to.Y}};
}

/// One contour as a ring of rounded points.
struct Ring {
    std::vector<OutlinePoint> Points;
    std::vector<bool> Smooth; // of the edge that ends at the point
};

/// Cuts the curves of a contour into edges.
class Flattener {
  public:
    explicit Flattener(double tolerance) : Tolerance(tolerance) {}

    Ring Flatten(const gl::OutlineContour& contour) {
        Result = {};
        OutlinePoint from = contour.Start;
        Add(from, false);
        for (const gl::OutlineSegment& segment : contour.Segments) {
            Follow(from, segment);
            from = segment.End;
        }
        Tidy();
        return std::move(Result);
    }

  private:
    void Follow(const OutlinePoint& from, const gl::OutlineSegment& segment) {
        if (segment.Controls == 0) {
            Add(segment.End, false);
            return;
        }
        OutlinePoint a = segment.Control[0], b = segment.Control[1];
        if (segment.Controls == 1) { // the same curve with two control points
            b = {(segment.End.X + 2 * a.X) / 3, (segment.End.Y + 2 * a.Y) / 3};
            a = {(from.X + 2 * a.X) / 3, (from.Y + 2 * a.Y) / 3};
        }
        // Pieces of equal parameter, as many as Wang's formula wants for the tolerance.
        const double first = std::hypot(from.X - 2 * a.X + b.X, from.Y - 2 * a.Y + b.Y);
        const double second = std::hypot(a.X - 2 * b.X + segment.End.X, a.Y - 2 * b.Y + segment.End.Y);
        const int pieces =
            static_cast<int>(std::clamp(std::ceil(std::sqrt(0.75 * std::max(first, second) / Tolerance)), 1.0, 64.0));
        for (int i = 1; i <= pieces; ++i)
            Add(i == pieces ? segment.End : OnCurve(from, a, b, segment.End, static_cast<double>(i) / pieces), true);
    }

    static OutlinePoint OnCurve(const OutlinePoint& a, const OutlinePoint& b, const OutlinePoint& c,
                                const OutlinePoint& d, double t) {
        const double s = 1 - t, w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        return {w[0] * a.X + w[1] * b.X + w[2] * c.X + w[3] * d.X, w[0] * a.Y + w[1] * b.Y + w[2] * c.Y + w[3] * d.Y};
    }

    void Add(const OutlinePoint& point, bool smooth) {
        Result.Points.push_back(Rounded(point));
        Result.Smooth.push_back(smooth);
    }

    void Remove(std::size_t i) {
        Result.Points.erase(Result.Points.begin() + static_cast<std::ptrdiff_t>(i));
        Result.Smooth.erase(Result.Smooth.begin() + static_cast<std::ptrdiff_t>(i));
    }

    /// Takes out points that repeat the one before, and those on the line between their neighbours.
    void Tidy() {
        auto& points = Result.Points;
        for (std::size_t i = 0, kept = 0; points.size() > 2 && kept <= points.size();) {
            i %= points.size();
            const std::size_t before = (i + points.size() - 1) % points.size(), after = (i + 1) % points.size();
            if (Across(points[before], points[i], points[after]) != 0) {
                ++i;
                ++kept;
                continue;
            }
            // The edge that takes the place of two is a curve's when both are; a point that repeats has but one.
            if (points[i] == points[after])
                Result.Smooth[after] = Result.Smooth[i];
            else if (points[i] != points[before])
                Result.Smooth[after] = Result.Smooth[after] && Result.Smooth[i];
            Remove(i);
            i = i < 2 ? 0 : i - 2;
            kept = 0;
        }
    }

    const double Tolerance;
    Ring Result;
};

GlyphPoint ToFontUnits(const OutlinePoint& point) {
    return {static_cast<float>(point.X / Grid), static_cast<float>(point.Y / Grid)};
}

/// The triangles of one glyph, of which none is without area.
class Triangulation {
  public:
    bool Fill(const std::vector<std::vector<OutlinePoint>>& rings) {
        std::vector<int> corners;
        if (!gl::FillOutline(rings, Points, corners))
            return false;
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
            Triangles.push_back({corners[i], corners[i + 1], corners[i + 2]});
        // Each step takes one away, or moves it on towards the outline.
        for (std::size_t i = 0, steps = 16 * Triangles.size(); i < Triangles.size() && steps > 0;)
            if (HasArea(Triangles[i])) {
                ++i;
            } else {
                Dissolve(i);
                i = 0;
                --steps;
            }
        return true;
    }

    using Triangle = std::array<int, 3>;

    std::vector<OutlinePoint> Points;
    std::vector<Triangle> Triangles;

  private:
    bool HasArea(const Triangle& t) const { return Across(Points[t[0]], Points[t[1]], Points[t[2]]) > 0; }

    double Length(int a, int b) const { return std::hypot(Points[a].X - Points[b].X, Points[a].Y - Points[b].Y); }

    /// Takes out a triangle whose corners lie on a line: the one beyond its longest edge is cut in two at the corner
    /// that lies on that edge.
    void Dissolve(std::size_t flat) {
        Triangle t = Triangles[flat];
        const auto longest = [&] { return Length(t[0], t[2]) >= std::max(Length(t[0], t[1]), Length(t[1], t[2])); };
        for (int turn = 0; turn < 2 && !longest(); ++turn)
            std::rotate(t.begin(), t.begin() + 1, t.end());
        Triangles.erase(Triangles.begin() + static_cast<std::ptrdiff_t>(flat));
        const auto samePlace = [&](int a, int b) { return Points[a] == Points[b]; };
        for (Triangle& beyond : Triangles)
            for (int corner = 0; corner < 3; ++corner) {
                const int from = beyond[corner], to = beyond[(corner + 1) % 3], opposite = beyond[(corner + 2) % 3];
                if (!samePlace(from, t[0]) || !samePlace(to, t[2]))
                    continue;
                beyond = {from, t[1], opposite};
                Triangles.push_back({t[1], to, opposite});
                return;
            }
    }
};

/// The triangles and edges of one glyph. Edges are those that only one triangle has: so walls on them close the letter,
/// whatever became of the outline where contours cross.
bool FillGlyph(const gl::GlyphOutline& outline, double tolerance, Glyph& glyph) {
    std::vector<std::vector<OutlinePoint>> rings;
    std::set<EdgeKey> smooth;
    Flattener flattener(tolerance);
    for (const gl::OutlineContour& contour : outline.Contours) {
        const Ring ring = flattener.Flatten(contour);
        if (ring.Points.size() < 3)
            continue;
        for (std::size_t i = 0; i < ring.Points.size(); ++i) {
            const OutlinePoint& before = ring.Points[(i + ring.Points.size() - 1) % ring.Points.size()];
            if (ring.Smooth[i]) {
                smooth.insert(KeyOf(before, ring.Points[i]));
                smooth.insert(KeyOf(ring.Points[i], before));
            }
        }
        rings.push_back(ring.Points);
    }
    Triangulation triangulation;
    if (!triangulation.Fill(rings))
        return false;
    std::vector<std::pair<OutlinePoint, OutlinePoint>> passed;
    std::set<EdgeKey> directed;
    glyph.Triangles.clear();
    glyph.Edges.clear();
    for (const Triangulation::Triangle& triangle : triangulation.Triangles) {
        GlyphTriangle& made = glyph.Triangles.emplace_back();
        for (int corner = 0; corner < 3; ++corner) {
            const OutlinePoint& from = triangulation.Points[triangle[corner]];
            const OutlinePoint& to = triangulation.Points[triangle[(corner + 1) % 3]];
            made.Points[corner] = ToFontUnits(from);
            passed.emplace_back(from, to);
            directed.insert(KeyOf(from, to));
        }
    }
    for (const auto& [from, to] : passed)
        if (!directed.contains(KeyOf(to, from)))
            glyph.Edges.push_back({{ToFontUnits(from), ToFontUnits(to)}, smooth.contains(KeyOf(from, to))});
    return true;
}

bool MakeGlyph(const gl::GlyphOutline& outline, Glyph& glyph) {
    constexpr int attempts = 20;
    glyph.Present = true;
    glyph.Advance = static_cast<float>(outline.Advance);
    double tolerance = FinestTolerance;
    for (int attempt = 0; attempt < attempts; ++attempt, tolerance *= Coarsening) {
        if (!FillGlyph(outline, tolerance, glyph))
            return false;
        if (glyph.Triangles.size() < TriangleLimit)
            break;
    }
    return true;
}

} // namespace

std::string MakeFont(const char* path, Font& font) {
    const gl::OutlineFont outlines(path);
    if (!outlines.Problem().empty())
        return outlines.Problem();
    bool any = false;
    for (int character = ' '; character < GlyphCount - 1; ++character) {
        gl::GlyphOutline outline;
        if (!outlines.Glyph(character, outline))
            continue;
        if (!MakeGlyph(outline, font.Glyphs[character]))
            return std::string("the outline of the character ") + static_cast<char>(character) + " cannot be filled";
        any = true;
    }
    return any ? "" : "the font has no glyphs of the characters from 32 to 126";
}
