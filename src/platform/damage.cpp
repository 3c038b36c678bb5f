#include "platform/damage.h"

#include <cstdint>
#include <utility>

namespace gl {

DamageList ScreenDamage;

namespace {

constexpr std::size_t MostBoxes = 12;

std::int64_t Area(const PixelBox& box) {
    return box.empty() ? 0 : static_cast<std::int64_t>(box.width) * box.height;
}

// Pixels composed needlessly (or, when negative, twice less) if two boxes become one.
std::int64_t Waste(const PixelBox& a, const PixelBox& b) {
    return Area(UnionOf(a, b)) - Area(a) - Area(b);
}

} // namespace

void DamageList::Add(const PixelBox& box) {
    if (box.empty())
        return;
    PixelBox joined = box;
    // A join may bring the box into reach of another one.
    for (bool again = true; again;) {
        again = false;
        for (std::size_t i = 0; i < Boxes.size(); i++) {
            const bool overlapping = !IntersectionOf(Boxes[i], joined).empty();
            if (overlapping || Waste(Boxes[i], joined) <= Area(joined) / 4) {
                joined = UnionOf(Boxes[i], joined);
                Boxes.erase(Boxes.begin() + static_cast<std::ptrdiff_t>(i));
                again = true;
                break;
            }
        }
    }
    if (Boxes.size() == MostBoxes) {
        std::size_t nearest = 0;
        for (std::size_t i = 1; i < Boxes.size(); i++)
            if (Waste(Boxes[i], joined) < Waste(Boxes[nearest], joined))
                nearest = i;
        joined = UnionOf(Boxes[nearest], joined);
        Boxes.erase(Boxes.begin() + static_cast<std::ptrdiff_t>(nearest));
        Add(joined);
        return;
    }
    Boxes.push_back(joined);
}

std::vector<PixelBox> DamageList::Take() {
    return std::exchange(Boxes, {});
}

} // namespace gl
