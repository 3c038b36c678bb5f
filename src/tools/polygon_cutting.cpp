#include "tools/polygon_cutting.h"

#include "geometry/planes.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "store/walks.h"

#include <algorithm>

double ChopFraction;

namespace {

/// A corner of the ring that is cut, and where the edge from it to the next crosses the plane.
struct Corner {
    const PolygonBead* Bead;
    bool Kept;
    bool Used;
    std::size_t GoesOn; // for an edge that leaves the kept side: the corner before the edge on which the part goes on
    double Along;       // of a crossing: its place on the line in which polygon and plane meet
};

/// The ring of one polygon, seen from one side of the plane.
class CutRing {
  public:
    CutRing(const Polygon* polygon, const double* plane, SideCheck keep) : Source(polygon), Plane(plane) {
        for (const PolygonBead* bead : EveryBead(polygon))
            Corners.push_back({bead, keep(bead->Vertex, plane), false, 0, 0});
        Link();
    }

    std::vector<Polygon*> Parts() {
        std::vector<Polygon*> parts;
        for (std::size_t start = 0; start < Corners.size(); ++start)
            if (Corners[start].Kept && !Corners[start].Used)
                parts.push_back(PartFrom(start));
        return parts;
    }

  private:
    std::size_t After(std::size_t corner) const { return corner + 1 == Corners.size() ? 0 : corner + 1; }

    /// Says for each edge that leaves the kept side where its part comes back. Along the line in which the polygon lies
    /// in the plane the outline leaves and enters in turn, and the inside of the polygon lies between the two of a
    /// pair.
    void Link() {
        std::vector<std::size_t> leaving, entering;
        for (std::size_t i = 0; i < Corners.size(); ++i)
            if (Corners[i].Kept != Corners[After(i)].Kept)
                (Corners[i].Kept ? leaving : entering).push_back(i);
        if (leaving.size() > 1) {
            PlaceCrossings();
            const auto before = [&](std::size_t a, std::size_t b) { return Corners[a].Along < Corners[b].Along; };
            std::stable_sort(leaving.begin(), leaving.end(), before);
            std::stable_sort(entering.begin(), entering.end(), before);
        }
        for (std::size_t i = 0; i < leaving.size(); ++i)
            Corners[leaving[i]].GoesOn = entering[i];
    }

    void PlaceCrossings() {
        double normal[3] = {0, 0, 0}, line[3];
        for (std::size_t i = 0; i < Corners.size(); ++i)
            AddNewellEdge(Position(i), Position(After(i)), normal);
        Cross(normal, Plane, line);
        for (std::size_t i = 0; i < Corners.size(); ++i) {
            if (Corners[i].Kept == Corners[After(i)].Kept)
                continue;
            const double fraction = Fraction(Position(i), Position(After(i)), Plane);
            Corners[i].Along =
                Dot(Position(i), line) + (Dot(Position(After(i)), line) - Dot(Position(i), line)) * fraction;
        }
    }

    const double* Position(std::size_t corner) const { return Corners[corner].Bead->Vertex->Position; }

    static double Fraction(const double* p0, const double* p1, const double* plane) {
        const double d0 = DistanceFromPointToPlane(p0, plane), d1 = DistanceFromPointToPlane(p1, plane);
        return -d0 / (d1 - d0);
    }

    void AddCorner(std::size_t corner) {
        const double* place = Position(corner);
        CopyPolygonBeadInfo(AddPolygonBead(Beads, AddVertex(place[0], place[1], place[2])), Corners[corner].Bead);
    }

    void AddCrossing(std::size_t corner) {
        const std::size_t next = After(corner);
        PolygonBead* bead = AddPolygonBead(Beads, ChopEdge(Position(corner), Position(next), Plane));
        ChopTexture(Corners[corner].Bead->TexCoord, Corners[next].Bead->TexCoord, bead->TexCoord);
    }

    Polygon* PartFrom(std::size_t start) {
        Beads = nullptr;
        for (std::size_t corner = start; !Corners[corner].Used;) {
            Corners[corner].Used = true;
            AddCorner(corner);
            if (!Corners[After(corner)].Kept) {
                AddCrossing(corner);
                corner = Corners[corner].GoesOn;
                AddCrossing(corner);
            }
            corner = After(corner);
        }
        SelectedSubObject() = Source->SubObject;
        Polygon* part = AddPolygon(Beads, nullptr);
        CopyPolygonInfo(part, Source);
        return part;
    }

    const Polygon* Source;
    const double* Plane;
    std::vector<Corner> Corners;
    PolygonBead* Beads = nullptr;
};

} // namespace

bool InfrontCheck(const Vertex* vertex, const double* plane) {
    return DistanceFromPointToPlane(vertex->Position, plane) >= 0;
}

bool BehindCheck(const Vertex* vertex, const double* plane) {
    return !InfrontCheck(vertex, plane);
}

std::vector<Polygon*> ChopPolygon(const Polygon* polygon, const double* plane, SideCheck keep) {
    return CutRing(polygon, plane, keep).Parts();
}

Vertex* ChopEdge(const double* p0, const double* p1, const double* plane) {
    const double d0 = DistanceFromPointToPlane(p0, plane), d1 = DistanceFromPointToPlane(p1, plane);
    ChopFraction = -d0 / (d1 - d0);
    double place[3];
    for (int axis = 0; axis < 3; ++axis)
        place[axis] = p0[axis] + (p1[axis] - p0[axis]) * ChopFraction;
    return AddVertex(place[0], place[1], place[2]);
}

void ChopTexture(const float* t0, const float* t1, float* out) {
    for (int i = 0; i < 2; ++i)
        out[i] = static_cast<float>(t0[i] + (static_cast<double>(t1[i]) - t0[i]) * ChopFraction);
}
