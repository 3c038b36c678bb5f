#pragma once

#include "store/view_record.h"

/// Turns a 3D view upright about what it looks at: its centre of rotation, else the middle of what is shown when that
/// lies before the eye, else the eye. The heading stays; the roll goes, and a look that is steeper up or down than 60
/// degrees becomes that of a default view.
void MakeViewUpright(View* view);
