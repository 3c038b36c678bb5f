#include "views/fitting.h"

#include "geometry/vectors.h"
#include "views/default_views.h"
#include "views/view_transform.h"

#include <algorithm>

void FitViewToBox(View* view, const ShownExtent& box) {
    const ExtentSphere sphere = SphereAround(box);
    BoxView(view, box.Radius);
    // A point has no size to be fitted to.
    const double radius = sphere.Radius > 0 ? sphere.Radius * RadiusSpare : UsableRadius(box.Radius);
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
    translation[1] += std::max(BoxDistance(*view, radius), LeastDepth(box) + radius);
    if (!view->HasCentre && LengthOfVector(sphere.Centre) > radius) {
        view->HasCentre = 1;
        std::copy_n(sphere.Centre, 3, view->Centre);
    }
}
