#include "platform/tessellation.h"

#include <algorithm>
#include <cmath>

namespace gl {

namespace {

struct Flat {
    double x, y;
};

// Twice the area of a triangle, positive when it turns counter-clockwise.
double Turn(const Flat& a, const Flat& b, const Flat& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool Inside(const Flat& a, const Flat& b, const Flat& c, const Flat& p) {
    return Turn(a, b, p) >= 0 && Turn(b, c, p) >= 0 && Turn(c, a, p) >= 0;
}

// The polygon laid flat: corners along two axes perpendicular to its normal (Newell's method), counter-clockwise.
// False when it has no area.
bool Flatten(const float* positions, int stride, int count, std::vector<Flat>& flat) {
    double normal[3] = {0, 0, 0};
    const float* first = positions;
    auto at = [&](int i, int axis) { return static_cast<double>(positions[i * stride + axis]) - first[axis]; };
    for (int i = 0, j = count - 1; i < count; j = i++)
        for (int axis = 0; axis < 3; axis++) {
            const int b = (axis + 1) % 3, c = (axis + 2) % 3;
            normal[axis] += (at(j, b) - at(i, b)) * (at(j, c) + at(i, c));
        }
    int across = 0;
    for (int axis = 1; axis < 3; axis++)
        if (std::abs(normal[axis]) > std::abs(normal[across]))
            across = axis;
    if (!(std::abs(normal[across]) > 0))
        return false;
    const int u = (across + 1) % 3, v = (across + 2) % 3;
    const double side = normal[across] > 0 ? 1 : -1;
    flat.resize(count);
    for (int i = 0; i < count; i++)
        flat[i] = {at(i, u) * side, at(i, v)};
    return true;
}

bool Convex(const std::vector<Flat>& flat) {
    const int count = static_cast<int>(flat.size());
    double area = 0, direction = flat[0].x - flat[count - 1].x;
    int reversals = 0;
    for (int i = 0, j = count - 1; i < count; j = i++) {
        area += flat[j].x * flat[i].y - flat[j].y * flat[i].x;
        const double step = flat[(i + 1) % count].x - flat[i].x;
        if (step * direction < 0)
            reversals++;
        if (step != 0)
            direction = step;
    }
    // Turning left everywhere is not enough: a star does too, but goes to and fro more than once.
    if (reversals > 2)
        return false;
    const double slack = -1e-6 * std::abs(area);
    for (int i = 0; i < count; i++)
        if (Turn(flat[i], flat[(i + 1) % count], flat[(i + 2) % count]) < slack)
            return false;
    return true;
}

void CutEars(const std::vector<Flat>& flat, std::vector<int>& triangles) {
    const int count = static_cast<int>(flat.size());
    std::vector<int> next(count), previous(count);
    for (int i = 0; i < count; i++) {
        next[i] = (i + 1) % count;
        previous[i] = (i + count - 1) % count;
    }
    std::vector<char> reflex(count);
    auto classify = [&](int i) { reflex[i] = Turn(flat[previous[i]], flat[i], flat[next[i]]) <= 0; };
    for (int i = 0; i < count; i++)
        classify(i);
    auto isEar = [&](int i) {
        if (reflex[i])
            return false;
        const Flat &a = flat[previous[i]], &b = flat[i], &c = flat[next[i]];
        for (int j = next[next[i]]; j != previous[i]; j = next[j]) {
            const Flat& p = flat[j];
            // A corner at the same place as one of the ear's (where an outline touches itself) does not block it.
            if (reflex[j] && Inside(a, b, c, p) && !(p.x == a.x && p.y == a.y) && !(p.x == b.x && p.y == b.y) &&
                !(p.x == c.x && p.y == c.y))
                return false;
        }
        return true;
    };
    int left = count, corner = 0, tried = 0;
    while (left > 3) {
        // After a whole round without an ear (an outline that crosses itself, or corners in a line) any corner is cut.
        const bool straight = Turn(flat[previous[corner]], flat[corner], flat[next[corner]]) == 0;
        if (tried >= left || straight || isEar(corner)) {
            if (!straight) {
                triangles.push_back(previous[corner]);
                triangles.push_back(corner);
                triangles.push_back(next[corner]);
            }
            const int p = previous[corner], n = next[corner];
            next[p] = n;
            previous[n] = p;
            classify(p);
            classify(n);
            left--;
            tried = 0;
            corner = n;
        } else {
            tried++;
            corner = next[corner];
        }
    }
    triangles.push_back(previous[corner]);
    triangles.push_back(corner);
    triangles.push_back(next[corner]);
}

void Fan(int count, std::vector<int>& triangles) {
    for (int i = 2; i < count; i++) {
        triangles.push_back(0);
        triangles.push_back(i - 1);
        triangles.push_back(i);
    }
}

} // namespace

void Triangulate(const float* positions, int stride, int count, std::vector<int>& triangles) {
    if (count < 3)
        return;
    if (count == 3)
        return Fan(count, triangles);
    if (count == 4 && !FirstDiagonal(positions, stride)) {
        triangles.insert(triangles.end(), {1, 2, 3, 1, 3, 0});
        return;
    }
    if (count == 4)
        return Fan(count, triangles);
    static std::vector<Flat> flat;
    if (!Flatten(positions, stride, count, flat) || Convex(flat))
        return Fan(count, triangles);
    CutEars(flat, triangles);
}

} // namespace gl
