#include "texturing/projections.h"

#include "geometry/boxes.h"
#include "interaction/position_gizmo.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/undo.h"
#include "store/walks.h"
#include "texturing/mappings.h"
#include "texturing/texture_application.h"
#include "views/grid.h"
#include "views/viewports.h"

#include <vector>

namespace {

using Mapping = void (*)(Polygon* polygon, const Matrix& toFrame, double scale);

/// In the order of selection.
std::vector<Polygon*> ProjectionPolygons;
/// From model space to that of the grid at the start.
Matrix ProjectionBase;
Mapping Projection;

void Project(const Matrix& matrix, int) {
    Matrix toFrame;
    MultMatrix(MatrixInverse(matrix), ProjectionBase, toFrame);
    const double scale = 1 / OneGridSquare();
    for (Polygon* polygon : ProjectionPolygons)
        Projection(polygon, toFrame, scale);
    AppearanceChanged(CurrentObject());
}

void EndProjection() {
    ProjectionPolygons = {};
    EndApplication();
}

void CancelProjection() {
    EndProjection();
    Undo();
}

/// Of the box of the polygons' vertices.
void CentreOfPolygons(double* centre) {
    double min[3], max[3];
    EmptyBox(min, max);
    for (const Polygon* polygon : ProjectionPolygons)
        for (const PolygonBead* bead : EveryBead(polygon))
            GrowBox(min, max, bead->Vertex->Position);
    for (int axis = 0; axis < 3; ++axis)
        centre[axis] = min[axis] <= max[axis] ? min[axis] / 2 + max[axis] / 2 : 0;
}

void StartProjection(Mapping mapping) {
    if (!CanApplyTexture())
        return;
    CopyCurrentObject();
    for (Polygon* polygon : Along<&Polygon::NextSelected>(FirstSelectedPolygon()))
        ProjectionPolygons.push_back(polygon);
    ProjectionBase = MatrixInverse(ViewOfViewport(0)->GridMatrix);
    Projection = mapping;
    Project(IdentityMatrix, PositionTranslating);
    OpenOffsetGizmo(Project, CancelProjection, EndProjection, CentreOfPolygons, nullptr, PositionTextureTitle);
    // Other proportions of another texture count at once.
    BeginApplication(ForceOffsetUpdate);
}

} // namespace

void ProjectPlanar() {
    StartProjection(MapPlanar);
}

void ProjectCubic() {
    StartProjection(MapCubic);
}
