#include "store/scene_extent.h"

#include "geometry/boxes.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/pools.h"
#include "store/walks.h"

#include <algorithm>
#include <cmath>

int LastSceneRadValid;

namespace {

constexpr double LeastEmptyRadius = 1000;

double LastRadius;
double SceneMin[3], SceneMax[3];

/// Sets the box of a branch that places the current object.
void MeasureBranch(Branch* branch) {
    EmptyBox(branch->Min, branch->Max);
    for (int corner = 0; corner < 8; ++corner) {
        double point[3];
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = (corner >> axis & 1) ? ObjectMax()[axis] : ObjectMin()[axis];
        TransformCoordinate(point, branch->Transform, point);
        if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]))
            GrowBox(branch->Min, branch->Max, point);
    }
}

bool IsEmptyBox(const double* min, const double* max) {
    return min[0] > max[0];
}

/// 0 when no object is placed.
int MeasureScene() {
    Object* const current = CurrentObject();
    EmptyBox(SceneMin, SceneMax);
    for (Branch* branch : EveryBranch(Scene())) {
        if (!branch->Object)
            continue;
        CurrentObject() = branch->Object;
        CleanUpObject();
        MeasureBranch(branch);
        if (IsEmptyBox(branch->Min, branch->Max))
            continue;
        GrowBox(SceneMin, SceneMax, branch->Min);
        GrowBox(SceneMin, SceneMax, branch->Max);
    }
    CurrentObject() = current;
    return !IsEmptyBox(SceneMin, SceneMax);
}

} // namespace

double SceneRadius() {
    Scene(); // a root made now has the scene measured
    if (!SceneChangedSize)
        return LastRadius;
    LastSceneRadValid = MeasureScene();
    if (LastSceneRadValid) {
        double reach[3];
        for (int axis = 0; axis < 3; ++axis)
            reach[axis] = std::max(std::fabs(SceneMin[axis]), std::fabs(SceneMax[axis]));
        LastRadius = 1.1 * LengthOfVector(reach);
    } else {
        std::fill_n(SceneMin, 3, 0.0);
        std::fill_n(SceneMax, 3, 0.0);
        LastRadius = std::max(ObjectRadius(), LeastEmptyRadius);
    }
    SceneChangedSize = 0;
    return LastRadius;
}

void GetSceneBox(const double*& min, const double*& max) {
    min = SceneMin;
    max = SceneMax;
}
