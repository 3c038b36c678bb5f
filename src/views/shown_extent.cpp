#include "views/shown_extent.h"

#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/scene_extent.h"

#include <cmath>

namespace {

constexpr double LostShare = 0.02;

} // namespace

ShownExtent SceneBox() {
    ShownExtent extent = {};
    extent.Radius = SceneRadius();
    GetSceneBox(extent.Min, extent.Max);
    return extent;
}

ShownExtent ObjectBox() {
    const double radius = ObjectRadius();
    return {ObjectMin(), ObjectMax(), radius};
}

ExtentSphere SphereAround(const ShownExtent& extent) {
    ExtentSphere sphere = {};
    double corner[3];
    for (int axis = 0; axis < 3; ++axis) {
        sphere.Centre[axis] = (extent.Min[axis] + extent.Max[axis]) / 2;
        corner[axis] = (extent.Max[axis] - extent.Min[axis]) / 2;
    }
    sphere.Radius = LengthOfVector(corner);
    if (!std::isfinite(sphere.Radius) || !std::isfinite(LengthOfVector(sphere.Centre)))
        return {{0, 0, 0}, extent.Radius / RadiusSpare};
    return sphere;
}

bool BoxIsLostFromAfar(const ShownExtent& extent) {
    const double radius = SphereAround(extent).Radius;
    return radius > 0 && radius < LostShare * extent.Radius;
}
