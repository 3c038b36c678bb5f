#pragma once

#include "store/accessors.h"
#include "store/walks.h"

#include <array>
#include <map>
#include <utility>
#include <vector>

/// What a surface is as a whole: corners are equal when their places are, to the last bit.
class Surface {
  public:
    using Place = std::array<double, 3>;

    void AddRing(const std::vector<Place>& ring) {
        ++Faces;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Place &a = ring[i], &b = ring[(i + 1) % ring.size()];
            Corners.try_emplace(a, static_cast<int>(Corners.size()));
            ++Edges[{a, b}];
        }
        for (std::size_t i = 1; i + 1 < ring.size(); ++i)
            SixVolumes += Determinant(ring[0], ring[i], ring[i + 1]);
    }

    /// Every edge is passed as often one way as the other way.
    bool IsClosed() const {
        for (const auto& [edge, count] : Edges) {
            const auto back = Edges.find({edge.second, edge.first});
            if (back == Edges.end() || back->second != count)
                return false;
        }
        return !Edges.empty();
    }

    /// No edge has more than two polygons.
    bool IsManifold() const {
        for (const auto& [edge, count] : Edges)
            if (count != 1)
                return false;
        return IsClosed();
    }

    int EulerCharacteristic() const {
        int edges = 0;
        for (const auto& [edge, count] : Edges)
            edges += edge.first < edge.second || !Edges.contains({edge.second, edge.first});
        return static_cast<int>(Corners.size()) - edges + Faces;
    }

    /// Of a closed surface; positive when its polygons face outward.
    double Volume() const { return SixVolumes / 6; }

    std::map<Place, int> Corners;
    int Faces = 0;

  private:
    static double Determinant(const Place& a, const Place& b, const Place& c) {
        return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
               a[2] * (b[0] * c[1] - b[1] * c[0]);
    }

    std::map<std::pair<Place, Place>, int> Edges;
    double SixVolumes = 0;
};

/// The polygons of the current object.
inline Surface SurfaceOfModel() {
    Surface surface;
    for (const Polygon* polygon : EveryPolygon(CurrentObject())) {
        std::vector<Surface::Place> ring;
        for (const PolygonBead* bead : EveryBead(polygon)) {
            const double* place = bead->Vertex->Position;
            ring.push_back({place[0], place[1], place[2]});
        }
        surface.AddRing(ring);
    }
    return surface;
}
