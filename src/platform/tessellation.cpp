#include "platform/tessellation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_set>

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

// The reflex corners of an outline, found by place: a balanced tree of boxes, halved along their longer side, whose
// nodes count the corners that are still reflex. A corner that is none any more costs no search anything.
class ReflexCorners {
  public:
    ReflexCorners(const std::vector<Flat>& flat, const std::vector<char>& reflex) : Corners(flat) {
        for (int i = 0; i < static_cast<int>(flat.size()); i++)
            if (reflex[i])
                Order.push_back(i);
        Leaf.assign(flat.size(), -1);
        if (!Order.empty())
            Build(0, 0, static_cast<int>(Order.size()));
    }

    // For corners that were reflex at the beginning; others are not kept.
    void Change(int corner, bool reflex) {
        if (Leaf[corner] < 0)
            return;
        for (int node = Leaf[corner]; node >= 0; node = node == 0 ? -1 : (node - 1) / 2)
            Nodes[node].Count += reflex ? 1 : -1;
    }

    bool Knows(int corner) const { return Leaf[corner] >= 0; }

    // Whether one of them blocks the ear. Counts its work.
    bool Block(const Flat& a, const Flat& b, const Flat& c, const std::vector<char>& reflex, long& work) const {
        const Flat low = {std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
        const Flat high = {std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
        int waiting[64], count = 0;
        if (!Nodes.empty())
            waiting[count++] = 0;
        while (count > 0) {
            const int number = waiting[--count];
            const Node& node = Nodes[number];
            ++work;
            if (node.Count == 0 || node.Low.x > high.x || node.High.x < low.x || node.Low.y > high.y ||
                node.High.y < low.y || IsBeside(node, a, b) || IsBeside(node, b, c) || IsBeside(node, c, a))
                continue;
            if (!node.IsLeaf) {
                waiting[count++] = 2 * number + 1;
                waiting[count++] = 2 * number + 2;
                continue;
            }
            work += node.End - node.Begin;
            for (int i = node.Begin; i < node.End; i++)
                if (reflex[Order[i]] && Blocks(a, b, c, Corners[Order[i]]))
                    return true;
        }
        return false;
    }

    // A corner at the same place as one of the ear's (where an outline touches itself) does not block it.
    static bool Blocks(const Flat& a, const Flat& b, const Flat& c, const Flat& p) {
        return Inside(a, b, c, p) && !(p.x == a.x && p.y == a.y) && !(p.x == b.x && p.y == b.y) &&
               !(p.x == c.x && p.y == c.y);
    }

  private:
    static constexpr int LeafSize = 4;

    struct Node {
        Flat Low, High;
        int Begin, End, Count;
        bool IsLeaf;
    };

    // All of the box lies to the right of the edge.
    static bool IsBeside(const Node& node, const Flat& a, const Flat& b) {
        const Flat leftmost = {b.y - a.y > 0 ? node.Low.x : node.High.x, b.x - a.x > 0 ? node.High.y : node.Low.y};
        return Turn(a, b, leftmost) < 0;
    }

    void Build(int number, int begin, int end) {
        if (static_cast<int>(Nodes.size()) <= number)
            Nodes.resize(number + 1);
        Flat low = Corners[Order[begin]], high = low;
        for (int i = begin; i < end; i++) {
            const Flat& p = Corners[Order[i]];
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
        const bool leaf = end - begin <= LeafSize;
        Nodes[number] = {low, high, begin, end, end - begin, leaf};
        if (leaf) {
            for (int i = begin; i < end; i++)
                Leaf[Order[i]] = number;
            return;
        }
        const int middle = (begin + end) / 2;
        const bool alongX = high.x - low.x > high.y - low.y;
        std::nth_element(Order.begin() + begin, Order.begin() + middle, Order.begin() + end, [&](int i, int j) {
            return alongX ? Corners[i].x < Corners[j].x : Corners[i].y < Corners[j].y;
        });
        Build(2 * number + 1, begin, middle);
        Build(2 * number + 2, middle, end);
    }

    const std::vector<Flat>& Corners;
    std::vector<int> Order, Leaf;
    std::vector<Node> Nodes;
};

// Cuts one corner after the other that no other corner of the rest lies in (Eberly, "Triangulation by Ear Clipping").
// Those that could lie in one are found by place, so that an honest outline of n corners takes about n log n steps.
// False when an outline took too many, the triangles so far being left.
bool CutEars(const std::vector<Flat>& flat, std::vector<int>& triangles) {
    // A step takes some tens of nanoseconds, at corners that are no ears more than at others: they lie anywhere.
    constexpr long mostSteps = 30'000'000, mostInVain = 8'000'000;
    // How often a corner may be tried before the outline is taken for one that crosses itself.
    constexpr long fewestTries = 20'000, triesPerCorner = 6;
    const int count = static_cast<int>(flat.size());
    std::vector<int> next(count), previous(count);
    for (int i = 0; i < count; i++) {
        next[i] = (i + 1) % count;
        previous[i] = (i + count - 1) % count;
    }
    std::vector<char> reflex(count);
    // Corners that become reflex when others go: only where an outline crosses itself.
    std::vector<int> lateReflex;
    auto isReflex = [&](int i) { return Turn(flat[previous[i]], flat[i], flat[next[i]]) <= 0; };
    for (int i = 0; i < count; i++)
        reflex[i] = isReflex(i);
    ReflexCorners tree(flat, reflex);
    auto set = [&](int i, bool now) {
        if (now == static_cast<bool>(reflex[i]))
            return;
        reflex[i] = now;
        tree.Change(i, now);
        if (now && !tree.Knows(i) && lateReflex.size() < 64)
            lateReflex.push_back(i);
    };
    long steps = 0, inVain = 0, triesLeft = std::max(fewestTries, triesPerCorner * count);
    auto isEar = [&](int i) {
        if (reflex[i])
            return false;
        const Flat &a = flat[previous[i]], &b = flat[i], &c = flat[next[i]];
        for (const int late : lateReflex)
            if (reflex[late] && ReflexCorners::Blocks(a, b, c, flat[late]))
                return false;
        const long before = steps;
        const bool blocked = tree.Block(a, b, c, reflex, steps);
        inVain += blocked ? steps - before : 0;
        return !blocked;
    };
    // A narrow band is cut from its ends, on both sides in turn: the corner before a cut is tried when that behind it
    // is no ear.
    int left = count, corner = 0, tried = 0, before = -1;
    while (left > 3) {
        if (++steps > mostSteps || inVain > mostInVain)
            return false;
        // After a whole round without an ear (an outline that crosses itself, or corners in a line) any corner is cut.
        const bool straight = Turn(flat[previous[corner]], flat[corner], flat[next[corner]]) == 0;
        const bool force = tried >= left || (triesLeft <= 0 && tried >= 2);
        if (force || straight || isEar(corner)) {
            if (!straight) {
                triangles.push_back(previous[corner]);
                triangles.push_back(corner);
                triangles.push_back(next[corner]);
            }
            const int p = previous[corner], n = next[corner];
            next[p] = n;
            previous[n] = p;
            set(corner, false);
            set(p, isReflex(p));
            set(n, isReflex(n));
            left--;
            tried = 0;
            corner = n;
            before = p;
        } else {
            tried++;
            triesLeft--;
            corner = before >= 0 ? before : next[corner];
            before = -1;
        }
    }
    triangles.push_back(previous[corner]);
    triangles.push_back(corner);
    triangles.push_back(next[corner]);
    return true;
}

void Fan(int count, std::vector<int>& triangles) {
    for (int i = 2; i < count; i++) {
        triangles.push_back(0);
        triangles.push_back(i - 1);
        triangles.push_back(i);
    }
}

// No smaller outline takes too many steps.
constexpr int FewestHopelessCorners = 4000;

// Outlines that took too many steps, so that they do so once.
std::unordered_set<std::uint64_t> Hopeless;

std::uint64_t HashOf(const std::vector<Flat>& flat) {
    const std::string_view bytes(reinterpret_cast<const char*>(flat.data()), flat.size() * sizeof(Flat));
    return std::hash<std::string_view>()(bytes);
}

} // namespace

bool Triangulate(const float* positions, int stride, int count, std::vector<int>& triangles) {
    if (count < 3)
        return true;
    if (count == 4 && !FirstDiagonal(positions, stride)) {
        triangles.insert(triangles.end(), {1, 2, 3, 1, 3, 0});
        return true;
    }
    static std::vector<Flat> flat;
    if (count <= 4 || !Flatten(positions, stride, count, flat) || Convex(flat)) {
        Fan(count, triangles);
        return true;
    }
    const bool large = count >= FewestHopelessCorners;
    const std::uint64_t hash = large ? HashOf(flat) : 0;
    if (large && Hopeless.contains(hash))
        return false;
    const std::size_t before = triangles.size();
    if (CutEars(flat, triangles))
        return true;
    triangles.resize(before);
    Hopeless.insert(hash);
    return false;
}

std::size_t HopelessOutlines() {
    return Hopeless.size();
}

} // namespace gl
