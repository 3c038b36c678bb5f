#pragma once

// The tool that drags out regular polygons on the grid, from their middle to a corner.

/// Starts it, unless polygons cannot be made now, which it tells. It runs until Done or Cancel.
void CreateCircularPolys();

inline constexpr int LeastCircleSides = 3, MostCircleSides = 256;
/// Sides of the polygons, an option of the tool.
extern int CircleSides;
