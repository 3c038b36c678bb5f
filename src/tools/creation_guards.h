#pragma once

#include "interaction/tool_guards.h"

/// New polygons have a place to go: afterwards the selected sub-object belongs to the level of detail that is edited,
/// the object's first level when none was selected. Otherwise the user has been told why.
int PolygonCreationAllowed();
