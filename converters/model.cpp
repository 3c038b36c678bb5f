#include "model.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace converters {

namespace {

using Point = std::array<double, 3>;

/// Of a parent's size: how far its sub-polygons are raised.
constexpr double Raise = 0.001;

Point Newell(const std::vector<Point>& ring) {
    Point normal = {0, 0, 0};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point &a = ring[i], &b = ring[(i + 1) % ring.size()];
        for (int axis = 0; axis < 3; ++axis) {
            const int u = (axis + 1) % 3, v = (axis + 2) % 3;
            normal[axis] += (a[u] - b[u]) * (a[v] + b[v]);
        }
    }
    const double length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
    for (double& part : normal)
        part = length > 0 ? part / length : 0;
    return normal;
}

std::vector<Point> RingOf(const Object& object, const Polygon& polygon) {
    std::vector<Point> ring;
    for (std::uint32_t i = 0; i < polygon.Corners; ++i) {
        const auto& vertex = object.Vertices[object.Corners[polygon.FirstCorner + i].Vertex];
        ring.push_back({vertex[0], vertex[1], vertex[2]});
    }
    return ring;
}

// The ring seen along its normal, in two dimensions.
std::vector<std::array<double, 2>> Flat(const std::vector<Point>& ring) {
    const Point normal = Newell(ring);
    int main = 0;
    for (int axis = 1; axis < 3; ++axis)
        if (std::abs(normal[axis]) > std::abs(normal[main]))
            main = axis;
    const int u = (main + 1) % 3, v = (main + 2) % 3;
    const double side = normal[main] < 0 ? -1 : 1;
    std::vector<std::array<double, 2>> flat;
    for (const Point& point : ring)
        flat.push_back({point[u] * side, point[v]});
    return flat;
}

double Turn(const std::array<double, 2>& a, const std::array<double, 2>& b, const std::array<double, 2>& c) {
    return (b[0] - a[0]) * (c[1] - b[1]) - (b[1] - a[1]) * (c[0] - b[0]);
}

bool Holds(const std::array<double, 2>& a, const std::array<double, 2>& b, const std::array<double, 2>& c,
           const std::array<double, 2>& point) {
    return Turn(a, b, point) >= 0 && Turn(b, c, point) >= 0 && Turn(c, a, point) >= 0;
}

} // namespace

std::vector<int> MembersAt(const Object& object, std::size_t level) {
    if (!object.Levels.empty())
        return object.Levels[std::min(level, object.Levels.size() - 1)].Members;
    std::vector<int> all(object.SubObjects.size());
    std::iota(all.begin(), all.end(), 0);
    return all;
}

std::vector<Placed> PlacedObjects(const Model& model) {
    std::vector<Placed> placed;
    for (const Branch& branch : model.Branches)
        if (branch.Object >= 0)
            placed.push_back({branch.Name, branch.Object, branch.Transform});
    if (placed.empty())
        for (std::size_t i = 0; i < model.Objects.size(); ++i)
            placed.push_back({model.Objects[i].Name, static_cast<int>(i), Identity});
    return placed;
}

std::array<double, 3> NormalOf(const Object& object, const Polygon& polygon) {
    return Newell(RingOf(object, polygon));
}

std::vector<std::array<double, 3>> PositionsOf(const Object& object, const Polygon& polygon) {
    std::vector<Point> ring = RingOf(object, polygon);
    int depth = 0;
    const Polygon* top = &polygon;
    for (; top->Parent >= 0; ++depth)
        top = &object.Polygons[static_cast<std::size_t>(top->Parent)];
    if (depth == 0)
        return ring;
    const std::vector<Point> parent = RingOf(object, *top);
    Point low = parent[0], high = parent[0];
    for (const Point& point : parent)
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], point[axis]);
            high[axis] = std::max(high[axis], point[axis]);
        }
    const double size = std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
    const Point normal = Newell(parent);
    for (Point& point : ring)
        for (int axis = 0; axis < 3; ++axis)
            point[axis] += normal[axis] * size * Raise * depth;
    return ring;
}

void Triangulate(const std::vector<std::array<double, 3>>& ring, std::vector<std::uint32_t>& triangles, bool& isFan) {
    triangles.clear();
    isFan = true;
    const auto count = static_cast<std::uint32_t>(ring.size());
    if (count < 3)
        return;
    std::vector<std::array<double, 2>> flat;
    if (count > 3) {
        flat = Flat(ring);
        for (std::uint32_t i = 0; i < count; ++i)
            if (Turn(flat[i], flat[(i + 1) % count], flat[(i + 2) % count]) < 0)
                isFan = false;
    }
    if (isFan) {
        for (std::uint32_t i = 2; i < count; ++i)
            triangles.insert(triangles.end(), {0, i - 1, i});
        return;
    }
    std::vector<std::uint32_t> left(count);
    std::iota(left.begin(), left.end(), 0U);
    std::size_t tries = 0;
    for (std::size_t i = 0; left.size() > 3; i = (i + 1) % left.size()) {
        const std::size_t n = left.size();
        const std::uint32_t a = left[i % n], b = left[(i + 1) % n], c = left[(i + 2) % n];
        bool ear = Turn(flat[a], flat[b], flat[c]) > 0;
        for (std::size_t k = 3; ear && k < n; ++k) {
            const std::uint32_t other = left[(i + k) % n];
            ear = flat[other] == flat[a] || flat[other] == flat[b] || flat[other] == flat[c] ||
                  !Holds(flat[a], flat[b], flat[c], flat[other]);
        }
        // A ring that crosses itself has no ears left at some point: any corner is taken then.
        if (!ear && ++tries <= n)
            continue;
        tries = 0;
        triangles.insert(triangles.end(), {a, b, c});
        left.erase(left.begin() + static_cast<std::ptrdiff_t>((i + 1) % n));
        i = i % left.size();
    }
    triangles.insert(triangles.end(), {left[0], left[1], left[2]});
}

std::array<double, 3> Transformed(const std::array<double, 3>& point, const Place& place) {
    std::array<double, 3> result;
    for (std::size_t axis = 0; axis < 3; ++axis)
        result[axis] =
            point[0] * place[axis] + point[1] * place[4 + axis] + point[2] * place[8 + axis] + place[12 + axis];
    return result;
}

Place Product(const Place& first, const Place& second) {
    Place result;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column) {
            result[row * 4 + column] = 0;
            for (std::size_t k = 0; k < 4; ++k)
                result[row * 4 + column] += first[row * 4 + k] * second[k * 4 + column];
        }
    return result;
}

double Determinant(const Place& p) {
    return p[0] * (p[5] * p[10] - p[6] * p[9]) - p[1] * (p[4] * p[10] - p[6] * p[8]) +
           p[2] * (p[4] * p[9] - p[5] * p[8]);
}

bool Inverse(const Place& p, Place& inverse) {
    const double determinant = Determinant(p);
    if (!(std::abs(determinant) > 1e-12))
        return false;
    inverse = Identity;
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const std::size_t r1 = (column + 1) % 3, r2 = (column + 2) % 3, c1 = (row + 1) % 3, c2 = (row + 2) % 3;
            inverse[row * 4 + column] =
                (p[r1 * 4 + c1] * p[r2 * 4 + c2] - p[r1 * 4 + c2] * p[r2 * 4 + c1]) / determinant;
        }
    for (std::size_t axis = 0; axis < 3; ++axis)
        inverse[12 + axis] = -(p[12] * inverse[axis] + p[13] * inverse[4 + axis] + p[14] * inverse[8 + axis]);
    return true;
}

} // namespace converters
