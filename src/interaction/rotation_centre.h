#pragma once

#include "store/view_record.h"

// The centre that the 3D view turns about.

/// Asks for it: the left button picks a point of the model, Escape or the menu of the right button ends the mode.
void SetRotationCentre();

/// Makes the model point under the pointer the centre. 0, the user having been told, when there is none.
int PickRotationCentre(View* view);

/// The view turns about the model's origin again.
void ResetRotationCentre(View* view);
