#pragma once

#include "store/view_record.h"
#include "views/shown_extent.h"

// Views that look at what they show wherever it lies. Default views look at a sphere about the origin instead.

/// Brings the box into the middle of the view and as large as it fits; the rotation stays. A 3D view turns about the
/// box from then on if that does not reach to the origin, unless it has a centre of rotation already.
void FitViewToBox(View* view, const ShownExtent& box);
