#include "store/motion.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/normals.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace {

Motion Present;
bool Going;
unsigned Motions, Steps;

/// Whether shapes stay solid along the way, and neither turn inside out.
bool KeepsShapes(const Matrix& way) {
    constexpr double leastShare = 1e-4;
    double longest = 0, shortest = INFINITY;
    double normal[3];
    CrossProduct(way[0], way[1], normal);
    const double volume = DotProduct(normal, way[2]);
    for (int row = 0; row < 3; ++row) {
        const double length = LengthOfVector(way[row]);
        longest = std::max(longest, length);
        shortest = std::min(shortest, length);
    }
    return volume > leastShare * longest * longest * shortest && shortest > leastShare * longest &&
           std::isfinite(volume);
}

} // namespace

const Motion* CurrentMotion() {
    return Going ? &Present : nullptr;
}

int StepMotion(Vertex* first, const Matrix& from, const Matrix& to) {
    Matrix way = IdentityMatrix;
    if (KeepsShapes(from))
        MultMatrix(MatrixInverse(from), to, way);
    if (!KeepsShapes(from) || !KeepsShapes(way)) {
        EndMotion();
        return 0;
    }
    if (!Going || Present.Of != CurrentObject() || Present.First != first)
        ++Motions;
    Going = true;
    Present = {CurrentObject(), first, way, Motions, ++Steps};
    VerticesHaveMoved(CurrentObject());
    return 1;
}

void EndMotion() {
    Going = false;
}

void MakeNormalsInMotion() {
    static unsigned madeIn;
    if (!Going || madeIn == Present.Step)
        return;
    madeIn = Present.Step;
    std::vector<Polygon*> polygons;
    for (const Vertex* vertex : Along<&Vertex::NextInGroup>(Present.First))
        for (const PolygonBead* bead : EveryUse(vertex))
            polygons.push_back(bead->Polygon);
    std::sort(polygons.begin(), polygons.end(), std::less<>());
    polygons.erase(std::unique(polygons.begin(), polygons.end()), polygons.end());
    GenerateNormalsOf(polygons);
}

void MarkVerticesInMotion() {
    for (Vertex* vertex : EveryVertex(Present.Of))
        vertex->Mark = 0;
    for (Vertex* vertex : Along<&Vertex::NextInGroup>(Present.First))
        vertex->Mark = 1;
}

Moves HowMuchMoves(const Polygon* polygon) {
    bool all = true, any = false;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        any |= bead->Vertex->Mark != 0;
        all &= bead->Vertex->Mark != 0;
    }
    return !any ? Moves::Nothing : all ? Moves::Everything : Moves::Something;
}
