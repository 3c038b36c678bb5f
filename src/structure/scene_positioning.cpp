#include "structure/scene_positioning.h"

#include "geometry/boxes.h"
#include "geometry/planes.h"
#include "interaction/modes.h"
#include "interaction/position_gizmo.h"
#include "interaction/scene_selection.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/scene_extent.h"
#include "store/storage.h"
#include "store/walks.h"
#include "structure/scene_operations.h"
#include "views/work_area.h"

#include <cmath>
#include <limits>

namespace {

constexpr int NothingToPosition = 56;

/// Calls function(Branch*) with each selected branch that places an object.
template <class Function>
void ForEachSelectedObject(Function function) {
    for (Branch* branch : EveryBranch(Scene()))
        if (branch->Selected && branch->Object)
            function(branch);
}

void ApplyToSelected(const Matrix& matrix, int) {
    ForEachSelectedObject([&](Branch* branch) { MultMatrix(branch->MoveStart, matrix, branch->Transform); });
    SceneChangedSize = 1;
}

void CancelMove() {
    UndoScene();
}

void FinishMove() {
    SelectScene(nullptr);
}

void Extend(double (&min)[3], double (&max)[3], const Branch* branch) {
    if (branch->Min[0] > branch->Max[0])
        return;
    GrowBox(min, max, branch->Min);
    GrowBox(min, max, branch->Max);
}

/// Takes the middle of what the branch places to that of the work area, or to the origin, standing on z = 0.
void CentreBranchOnWorkArea(Branch* branch) {
    SceneRadius();
    double min[3], max[3];
    EmptyBox(min, max);
    Extend(min, max, branch);
    for (const Branch* each : EveryBranchBelow(branch))
        if (each->Object)
            Extend(min, max, each);
    if (min[0] > max[0])
        return;
    double x = (min[0] + max[0]) / 2, y = (min[1] + max[1]) / 2;
    if (x < WorkAreaLeft || x > WorkAreaRight || y < WorkAreaFront || y > WorkAreaBack) {
        x -= (WorkAreaLeft + WorkAreaRight) / 2;
        y -= (WorkAreaFront + WorkAreaBack) / 2;
    }
    const Matrix move = TranslationMatrix(-x, -y, -min[2]);
    const auto translate = [&](Branch* each) {
        if (each->Object)
            MultMatrix(each->Transform, move, each->Transform);
    };
    translate(branch);
    for (Branch* each : EveryBranchBelow(branch))
        translate(each);
}

} // namespace

void MoveScene(int takeUndo) {
    if (!TellUnless(CountSceneObjectSelections() > 0, NothingToPosition))
        return;
    ShowSceneMode();
    if (takeUndo)
        CopySceneForUndo();
    ForEachSelectedObject([](Branch* branch) { branch->MoveStart = branch->Transform; });
    OpenOffsetGizmo(ApplyToSelected, CancelMove, FinishMove, CentreOfSelectedObjects, TouchOfSelectedObjects,
                    PositionObjectsTitle);
}

void PlaceNewBranch(Branch* branch, int centre) {
    ShowSceneMode();
    SelectScene(branch);
    if (centre || WorkAreaGizmo)
        CentreBranchOnWorkArea(branch);
    SceneChangedSize = 1;
    if (AnyObjectsInBranch(branch))
        MoveScene(0);
    DirtySceneWindows();
}

void ShowSceneMode() {
    if (ObjectIsolated)
        ChangeObjectIsolation();
}

void CentreOfSelectedObjects(double* centre) {
    SceneChangedSize = 1;
    SceneRadius();
    double min[3], max[3];
    EmptyBox(min, max);
    ForEachSelectedObject([&](const Branch* branch) { Extend(min, max, branch); });
    for (int axis = 0; axis < 3; ++axis)
        centre[axis] = min[axis] > max[axis] ? 0 : (min[axis] + max[axis]) / 2;
}

int TouchOfSelectedObjects(const double* plane, double& distance) {
    bool before = false, behind = false;
    double nearest = std::numeric_limits<double>::infinity();
    ForEachSelectedObject([&](const Branch* branch) {
        for (const Vertex* vertex : EveryVertex(branch->Object)) {
            double place[3];
            TransformCoordinate(vertex->Position, branch->Transform, place);
            const double d = DistanceFromPointToPlane(place, plane);
            before |= d >= 0;
            behind |= d <= 0;
            if (std::fabs(d) < std::fabs(nearest))
                nearest = d;
        }
    });
    // What has a point on the plane touches it.
    if (before == behind)
        return 0;
    distance = nearest;
    return 1;
}
