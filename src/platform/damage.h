// What of the screen must be composed anew: a few boxes of screen pixels.
#pragma once

#include "platform/surface.h"

#include <vector>

namespace gl {

class DamageList {
  public:
    // Adds a box; boxes that lie close together are joined, so that the list stays short.
    void Add(const PixelBox& box);

    bool Empty() const { return Boxes.empty(); }

    // Hands the boxes over (they do not overlap) and starts again.
    std::vector<PixelBox> Take();

  private:
    std::vector<PixelBox> Boxes;
};

// The damage of the screen since it was composed last.
extern DamageList ScreenDamage;

} // namespace gl
