#include "views/fitting.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/scene_extent.h"
#include "views/default_views.h"
#include "views/view_transform.h"

#include <algorithm>
#include <cmath>

namespace {

/// A tenth to spare, as in the radius of objects.
constexpr double Spare = 1.1;
constexpr double LostShare = 0.02;

struct Sphere {
    double Centre[3];
    double Radius;
};

/// Around the box. One that is not finite counts as all there is about the origin.
Sphere SphereAround(const ShownExtent& box) {
    Sphere sphere = {};
    double corner[3];
    for (int axis = 0; axis < 3; ++axis) {
        sphere.Centre[axis] = (box.Min[axis] + box.Max[axis]) / 2;
        corner[axis] = (box.Max[axis] - box.Min[axis]) / 2;
    }
    sphere.Radius = LengthOfVector(corner);
    if (!std::isfinite(sphere.Radius) || !std::isfinite(LengthOfVector(sphere.Centre)))
        return {{0, 0, 0}, box.Radius / Spare};
    return sphere;
}

} // namespace

ShownExtent SceneBox() {
    ShownExtent box = {};
    box.Radius = SceneRadius();
    GetSceneBox(box.Min, box.Max);
    return box;
}

ShownExtent ObjectBox() {
    const double radius = ObjectRadius();
    return {ObjectMin(), ObjectMax(), radius};
}

void FitViewToBox(View* view, const ShownExtent& box) {
    const Sphere sphere = SphereAround(box);
    BoxView(view, box.Radius);
    // A point has no size to be fitted to.
    const double radius = sphere.Radius > 0 ? sphere.Radius * Spare : UsableRadius(box.Radius);
    double centre[3];
    RotateVector(sphere.Centre, view->ViewMatrix, centre);
    double* translation = view->ViewMatrix[3];
    for (int axis = 0; axis < 3; ++axis)
        translation[axis] = -centre[axis];
    if (!view->Perspective) {
        // All depths are shown, and the grid keeps its place before the eye.
        translation[1] = 0;
        view->Zoom = UsableRadius(box.Radius) / UsableRadius(radius);
        return;
    }
    translation[1] += std::max(BoxDistance(*view, radius), LeastDepth(box.Radius) + radius);
    if (!view->HasCentre && LengthOfVector(sphere.Centre) > radius) {
        view->HasCentre = 1;
        std::copy_n(sphere.Centre, 3, view->Centre);
    }
}

bool BoxIsLostFromAfar(const ShownExtent& box) {
    const double radius = SphereAround(box).Radius;
    return radius > 0 && radius < LostShare * box.Radius;
}
