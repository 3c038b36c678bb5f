#include "interaction/selection_regions.h"

#include "interaction/selection_rules.h"
#include "interaction/selection_sets.h"
#include "store/clean_up.h"
#include "store/connections.h"
#include "store/walks.h"

#include <vector>

namespace {

bool ShadedAlike(const Polygon* a, const Polygon* b) {
    return a->Lighting == b->Lighting && (a->Lighting != LightingSmooth || a->LightGroup == b->LightGroup);
}

/// Visits what can be reached from the polygon over polygons that belong(neighbour).
template <class Belongs>
void SelectRegion(Polygon* start, Belongs belongs) {
    CleanUpObject();
    // Only the polygons of the level can be reached.
    SetAllPolygonFlags();
    ClearAllVertexFlags();
    FlagPolygonsInLod(0);

    start->Mark = 1;
    std::vector<Polygon*> waiting{start}; // regions are too large for recursion
    while (!waiting.empty()) {
        Polygon* polygon = waiting.back();
        waiting.pop_back();
        ApplyPolygonRule(polygon);
        for (const PolygonBead* corner : EveryBead(polygon)) {
            Vertex* vertex = corner->Vertex;
            if (vertex->Mark)
                continue;
            vertex->Mark = 1;
            for (const PolygonBead* use : EveryUse(vertex)) {
                Polygon* neighbour = use->Polygon;
                if (neighbour->Mark || !belongs(neighbour))
                    continue;
                neighbour->Mark = 1;
                waiting.push_back(neighbour);
            }
        }
    }
}

} // namespace

void SelectConnectedRegion(Polygon* polygon) {
    SelectRegion(polygon, [](const Polygon*) { return true; });
}

void SelectSmoothingRegion(Polygon* polygon) {
    SelectRegion(polygon, [=](const Polygon* neighbour) { return ShadedAlike(neighbour, polygon); });
}
