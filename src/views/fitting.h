#pragma once

#include "store/view_record.h"

// Views that look at what they show wherever it lies. Default views look at a sphere about the origin instead.

/// The box of what a view shows, model space, and the radius about the origin that its projection is for; metres.
struct ShownExtent {
    const double *Min, *Max;
    double Radius;
};

ShownExtent SceneBox();
ShownExtent ObjectBox();

/// Brings the box into the middle of the view and as large as it fits; the rotation stays. A 3D view turns about the
/// box from then on if that does not reach to the origin, unless it has a centre of rotation already.
void FitViewToBox(View* view, const ShownExtent& box);

/// Whether the box has a size, but one of few pixels in views of all the sphere about the origin.
bool BoxIsLostFromAfar(const ShownExtent& box);
