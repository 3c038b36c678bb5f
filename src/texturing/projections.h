#pragma once

// Projections of the current texture onto the selected polygons, in the space of the large view's grid as it was when
// they began, which the position gizmo moves, turns and scales. A grid square is as wide as the texture.

/// Starts the one along the grid's normal; the one along that axis of the grid which each polygon faces most.
void ProjectPlanar();
void ProjectCubic();
