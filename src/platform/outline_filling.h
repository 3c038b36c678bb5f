// Filling outlines with triangles.
#pragma once

#include "platform/font_outlines.h"

namespace gl {

// Fills what lies inside closed rings of points. The corners of the triangles, which turn counter-clockwise and meet
// edge to edge, are numbers of `points`: those of the rings in order, followed by those where edges cross. False, with
// no triangles, when the rings cannot be filled.
bool FillOutline(const std::vector<std::vector<OutlinePoint>>& rings, std::vector<OutlinePoint>& points,
                 std::vector<int>& triangles);

} // namespace gl
