#pragma once

#include "store/curves.h"

#include <array>
#include <vector>

using FlatPoint = std::array<double, 3>;

/// The points of the curve in order, as far apart as its smoothness allows: edges turn by 20, 10 or 5 degrees at most,
/// about. Those of a closed curve lead back to the first one, which is not repeated. Fewer than two control points give
/// none.
std::vector<FlatPoint> FlattenElist(const Elist& list);
