#include "views/traversal.h"

#include "geometry/planes.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/storage.h"
#include "views/clipping.h"
#include "views/display_flags.h"
#include "views/drawing.h"
#include "views/grid.h"
#include "views/moves.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

int NoSceneSelection = 1;
int StructureEditorIsOpen;

Branch* BranchBeingChecked;
Matrixf BackfaceMatrix = FloatIDMatrix;
int BackfaceWireFrame;

namespace {

/// An axis that points at the eye within this part of its length has no direction on the screen.
constexpr double NoDirection = 1e-6;

/// How far before the surfaces markers stand, as a part of the distance or of the size of what is shown.
constexpr double MarkerLead = 0.01;

/// The level of a placed object for the depth of its origin; null when it is too far away.
Lod* LevelFor(const View* view, double depth) {
    Lod* lod = FirstLod();
    if (!view->Perspective)
        return lod;
    const double magnification = WorkAreaMagnification();
    while (lod && depth < -(magnification * lod->Distance))
        lod = lod->Next;
    return lod;
}

/// Turns a billboard about its own z axis to the eye; false when it shows its edge, which is nothing.
bool FaceTheEye(ShownObject& shown) {
    const double(&yAxis)[4] = shown.ToEye[1];
    const double length = std::hypot(yAxis[0], yAxis[1], yAxis[2]);
    if (std::hypot(yAxis[0], yAxis[2]) <= length * NoDirection)
        return false;
    double angle = std::atan2(yAxis[0], -yAxis[2]) * RadiansToDegrees;
    if (shown.ToEye[2][1] < 0)
        angle = -angle;
    const Matrix turn = YawMatrix(angle);
    MultMatrix(turn, shown.ToEye, shown.ToEye);
    MultMatrix(turn, shown.Placement, shown.Placement);
    return true;
}

int ModeFor(int mode, const TraversalSink& sink, bool inScene) {
    if (sink.Wants != TraversalSink::Drawing)
        return sink.Wants == TraversalSink::Vertices ? ShownMarkersOnly : ShownSolid;
    if (!inScene && SelectionsSolid && FirstSelectedPolygon())
        return ShownWire;
    return mode;
}

bool SceneSelectionIsOn() {
    return !NoSceneSelection;
}

int SceneMode(const Branch* branch) {
    if (Moving && MoveWire)
        return ShownBox;
    if (!SolidView)
        return ShownWire;
    return SceneSelectionIsOn() && SelectionsSolid && !branch->Selected ? ShownWire : ShownSolid;
}

void TakeBranch(View* view, Branch* branch, TraversalSink& sink) {
    if (!branch->Object || !SceneObjectVisible(branch))
        return;
    CurrentObject() = branch->Object;
    BranchBeingChecked = branch;
    TraverseSingleObject(view, SceneMode(branch), branch, &branch->Transform, sink);
    if (sink.Wants == TraversalSink::Drawing && SceneSelectionIsOn() && branch->Selected && !SelectionsSolid)
        TraverseSingleObject(view, ShownBox, branch, &branch->Transform, sink);
}

Branch* FirstVisible(Branch* branch) {
    while (branch && HideScene && !branch->Visible)
        branch = branch->Next;
    return branch;
}

} // namespace

void TraverseView(View* view, TraversalSink& sink) {
    if (ObjectIsolated)
        TraverseObject(view, !SolidView || (MoveWire && Moving) ? ShownWire : ShownSolid, sink);
    else
        TraverseScene(view, sink);
}

void TraverseScene(View* view, TraversalSink& sink) {
    Object* current = CurrentObject();
    BackfaceWireFrame = view->Perspective;
    std::vector<Branch*> path; // whose children are being walked
    Branch* branch = FirstVisible(Scene());
    while (branch || !path.empty()) {
        if (branch) {
            path.push_back(branch);
            branch = FirstVisible(branch->FirstChild);
        } else {
            TakeBranch(view, path.back(), sink);
            branch = FirstVisible(path.back()->Next);
            path.pop_back();
        }
    }
    BranchBeingChecked = nullptr;
    CurrentObject() = current;
}

void TraverseObject(View* view, int mode, TraversalSink& sink) {
    BackfaceWireFrame = 0;
    BranchBeingChecked = nullptr;
    TraverseSingleObject(view, mode, nullptr, nullptr, sink);
}

void TraverseSingleObject(View* view, int mode, Branch* branch, const Matrix* transform, TraversalSink& sink) {
    CleanUpObject();
    ShownObject shown = {CurrentObject(), branch, view, mode, nullptr, IdentityMatrix, view->Transform};
    if (transform) {
        shown.Placement = *transform;
        MultMatrix(*transform, view->Transform, shown.ToEye);
        shown.Lod = LevelFor(view, shown.ToEye[3][2]);
        if (!shown.Lod)
            return;
        if ((ObjectAttributes() & ObjectIsBillboard) && !FaceTheEye(shown))
            shown.Mode = ShownMarkersOnly;
    } else
        shown.Lod = SelectedLod();
    if (shown.Mode != ShownMarkersOnly && shown.Mode != ShownBox)
        shown.Mode = ModeFor(shown.Mode, sink, transform);
    RealMatrixToFloat(shown.ToEye, BackfaceMatrix);
    RealMatrixToFloat(shown.Placement, ObjectTransformation);
    DoObjectTransform = transform != nullptr;
    sink.TakeObject(shown);
    DoObjectTransform = 0;
}

int LodBeadIsShown(const LodBead* bead) {
    return !(ObjectIsolated && StructureEditorIsOpen && HideSubObjects) || bead->Shown;
}

void FlagVisibleSubObjects() {
    FlagVisibleSubObjects(SelectedLod());
}

void FlagVisibleSubObjects(const Lod* lod) {
    for (SubObject* subObject : EverySubObject(CurrentObject()))
        subObject->Visible = 0;
    if (lod)
        for (const LodBead* bead : EveryLodBead(lod))
            if (LodBeadIsShown(bead))
                bead->SubObject->Visible = 1;
}

VertexSight::VertexSight(const ShownObject& shown)
    : Placement(shown.Placement),
      Area(WorkAreaGizmo != nullptr),
      Plane(),
      Side(0) {
    MarkerMatrix(shown.View, shown.ToEye, Marker);
    if (HidingVertices && shown.View->Perspective) {
        GetPlaneFromTransformation(GridMat(shown.View), Plane);
        const double eye[3] = {0, 0, shown.View->Size};
        Side = DistanceFromPointToPlane(eye, Plane) > 0 ? 1 : -1;
    }
}

bool VertexSight::Sees(const Vertex* vertex) const {
    if (Area) {
        double place[3];
        TransformPoint(vertex->Position, Placement, place);
        const float point[3] = {static_cast<float>(place[0]), static_cast<float>(place[1]),
                                static_cast<float>(place[2])};
        if (!PointInsideWorkArea(point))
            return false;
    }
    if (!Side)
        return true;
    constexpr double tolerance = 0.001; // vertices on the grid are seen from both sides
    double place[3];
    TransformPoint(vertex->Position, Marker, place);
    return Side * DistanceFromPointToPlane(place, Plane) > -tolerance;
}

void MarkerMatrix(const View* view, const Matrix& toEye, Matrix& out) {
    constexpr double nearer = 1 - MarkerLead;
    MultMatrix(toEye,
               view->Perspective ? ScaleMatrix(nearer, nearer, nearer)
                                 : TranslationMatrix(0, 0, MarkerLead * view->Size),
               out);
}
