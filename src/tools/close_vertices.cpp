#include "tools/close_vertices.h"

#include "geometry/boxes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

using Index = std::uint32_t;
using Indices = std::span<Index>;

/// Sets of numbers; a set is known by its least one.
class Sets {
  public:
    explicit Sets(std::size_t count) : Parent(count) { std::iota(Parent.begin(), Parent.end(), Index{0}); }

    Index Of(Index number) {
        while (Parent[number] != number)
            number = Parent[number] = Parent[Parent[number]];
        return number;
    }

    void Join(Index a, Index b) {
        a = Of(a);
        b = Of(b);
        Parent[std::max(a, b)] = std::min(a, b);
    }

  private:
    std::vector<Index> Parent;
};

/// A cube of space, by its place in a lattice.
using Cell = std::array<std::int64_t, 3>;

/// Two cells further apart than this many steps of the lattice hold no two vertices that are close.
constexpr int Reach = 2;
/// Beyond this many steps from the origin neighbouring places are further apart than cells.
constexpr double FarthestStep = 1e15;

class Grouper {
  public:
    Grouper(std::span<Vertex* const> vertices, double distance)
        // The diagonal of a cell is a little shorter than the distance: all that lies in one cell hangs together.
        : Vertices(vertices),
          Square(distance * distance),
          CellSize(distance / std::sqrt(3.0) * 0.999999),
          Groups(vertices.size()) {}

    std::vector<Index> Group() {
        SortIntoCells();
        JoinCells();
        std::vector<Index> first(Vertices.size());
        for (Index i = 0; i < first.size(); ++i)
            first[i] = Groups.Of(i);
        return first;
    }

  private:
    struct FilledCell {
        Cell Place;
        Index Begin, End; // in Members
    };

    const double* PlaceOf(Index vertex) const { return Vertices[vertex]->Position; }

    bool CellOf(Index vertex, Cell& cell) const {
        for (std::size_t axis = 0; axis < cell.size(); ++axis) {
            const double step = std::floor(PlaceOf(vertex)[axis] / CellSize);
            if (!(std::fabs(step) < FarthestStep))
                return false;
            cell[axis] = static_cast<std::int64_t>(step);
        }
        return true;
    }

    /// Cells come to lie in order; the members of each follow each other in Members, and are joined.
    void SortIntoCells() {
        std::vector<std::pair<Cell, Index>> sorted;
        sorted.reserve(Vertices.size());
        Cell cell;
        for (Index i = 0; i < Vertices.size(); ++i)
            if (CellOf(i, cell))
                sorted.emplace_back(cell, i);
        std::sort(sorted.begin(), sorted.end());
        Members.reserve(sorted.size());
        for (const auto& [place, vertex] : sorted) {
            const auto next = static_cast<Index>(Members.size());
            if (Cells.empty() || Cells.back().Place != place)
                Cells.push_back({place, next, next});
            Members.push_back(vertex);
            Cells.back().End = next + 1;
            Groups.Join(Members[Cells.back().Begin], vertex);
        }
    }

    Indices MembersOf(const FilledCell& cell) { return Indices(Members).subspan(cell.Begin, cell.End - cell.Begin); }

    /// Each pair of cells within reach once.
    void JoinCells() {
        JoinAlongRow(0, 0, 1);
        for (int y = 1; y <= Reach; ++y)
            JoinAlongRow(0, y, -Reach);
        for (int x = 1; x <= Reach; ++x)
            for (int y = -Reach; y <= Reach; ++y)
                JoinAlongRow(x, y, -Reach);
    }

    /// Joins every cell with those at (x, y, firstZ to Reach) from it: both run through the cells in step.
    void JoinAlongRow(int x, int y, int firstZ) {
        auto from = Cells.begin();
        for (const FilledCell& cell : Cells) {
            const Cell first = {cell.Place[0] + x, cell.Place[1] + y, cell.Place[2] + firstZ};
            const Cell last = {first[0], first[1], cell.Place[2] + Reach};
            while (from != Cells.end() && from->Place < first)
                ++from;
            for (auto other = from; other != Cells.end() && other->Place <= last; ++other)
                JoinCellWith(cell, *other);
        }
    }

    void JoinCellWith(const FilledCell& cell, const FilledCell& other) {
        const Index a = Members[cell.Begin], b = Members[other.Begin];
        if (Groups.Of(a) != Groups.Of(b) && AnyClose(MembersOf(cell), MembersOf(other)))
            Groups.Join(a, b);
    }

    bool AreClose(Index a, Index b) const {
        double square = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const double difference = PlaceOf(a)[axis] - PlaceOf(b)[axis];
            square += difference * difference;
        }
        return square < Square;
    }

    struct Box {
        double Min[3], Max[3];

        int LongestAxis() const {
            int longest = 0;
            for (int axis = 1; axis < 3; ++axis)
                if (Max[axis] - Min[axis] > Max[longest] - Min[longest])
                    longest = axis;
            return longest;
        }

        double Length() const { return Max[LongestAxis()] - Min[LongestAxis()]; }
    };

    Box BoxOf(Indices members) const {
        Box box;
        EmptyBox(box.Min, box.Max);
        for (const Index member : members)
            GrowBox(box.Min, box.Max, PlaceOf(member));
        return box;
    }

    /// Whether any of the one and any of the other are close; sets whose boxes tell that they are not are not searched.
    bool AnyClose(Indices a, Indices b) const {
        constexpr std::size_t few = 8;
        if (a.size() <= few && b.size() <= few)
            return std::any_of(a.begin(), a.end(), [&](Index i) {
                return std::any_of(b.begin(), b.end(), [&](Index j) { return AreClose(i, j); });
            });
        const Box boxA = BoxOf(a), boxB = BoxOf(b);
        double gap = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const double apart = std::max({boxA.Min[axis] - boxB.Max[axis], boxB.Min[axis] - boxA.Max[axis], 0.0});
            gap += apart * apart;
        }
        if (!(gap < Square))
            return false;
        if (AreClose(a.front(), b.front()))
            return true;
        const bool splitA = b.size() <= 1 || (a.size() > 1 && boxA.Length() >= boxB.Length());
        Indices& split = splitA ? a : b;
        const Box& box = splitA ? boxA : boxB;
        const Indices rest = splitA ? b : a;
        if (!(box.Length() > 0)) // all in one place: one stands for all
            return AnyClose(split.first(1), rest);
        const int axis = box.LongestAxis();
        const std::size_t half = split.size() / 2;
        std::nth_element(split.begin(), split.begin() + static_cast<std::ptrdiff_t>(half), split.end(),
                         [&](Index i, Index j) { return PlaceOf(i)[axis] < PlaceOf(j)[axis]; });
        return AnyClose(split.first(half), rest) || AnyClose(split.subspan(half), rest);
    }

    std::span<Vertex* const> Vertices;
    double Square, CellSize;
    Sets Groups;
    std::vector<FilledCell> Cells;
    std::vector<Index> Members;
};

} // namespace

std::vector<std::uint32_t> GroupCloseVertices(std::span<Vertex* const> vertices, double distance) {
    if (!(distance > 0) || !std::isfinite(distance)) {
        std::vector<std::uint32_t> alone(vertices.size());
        std::iota(alone.begin(), alone.end(), 0U);
        return alone;
    }
    return Grouper(vertices, distance).Group();
}
