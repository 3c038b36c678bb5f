#include "interaction/box_hierarchy.h"

#include <array>
#include <utility>

namespace {

constexpr int BitsAnAxis = 16;

/// An item and its place along a curve that runs through all of space, near places close together.
struct Place {
    std::uint64_t Key;
    std::uint32_t Item;
};

float Centre(const SelectBox& box, int axis) {
    return box.Min[axis] / 2 + box.Max[axis] / 2;
}

/// Moves the lowest 21 bits three apart.
std::uint64_t SpreadBits(std::uint64_t bits) {
    bits = (bits | bits << 32) & 0x001F'0000'0000'FFFF;
    bits = (bits | bits << 16) & 0x001F'0000'FF00'00FF;
    bits = (bits | bits << 8) & 0x100F'00F0'0F00'F00F;
    bits = (bits | bits << 4) & 0x10C3'0C30'C30C'30C3;
    bits = (bits | bits << 2) & 0x1249'2492'4924'9249;
    return bits;
}

std::vector<Place> PlacesOf(const std::vector<SelectBox>& boxes) {
    SelectBox bounds;
    for (const SelectBox& box : boxes) {
        const float centre[3] = {Centre(box, 0), Centre(box, 1), Centre(box, 2)};
        bounds.Grow(centre);
    }
    constexpr float steps = (1 << BitsAnAxis) - 1;
    float scale[3];
    for (int axis = 0; axis < 3; ++axis) {
        const float extent = bounds.Max[axis] - bounds.Min[axis];
        scale[axis] = extent > 0 ? steps / extent : 0;
    }
    std::vector<Place> places(boxes.size());
    for (std::size_t item = 0; item < boxes.size(); ++item) {
        std::uint64_t key = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const float step = (Centre(boxes[item], axis) - bounds.Min[axis]) * scale[axis];
            // Anything that is not a number goes to one end, where it does no harm.
            const std::uint64_t number = step >= 0 && step <= steps ? static_cast<std::uint64_t>(step) : 0;
            key |= SpreadBits(number) << axis;
        }
        places[item] = {key, static_cast<std::uint32_t>(item)};
    }
    return places;
}

/// Sorts by key, 16 bits at a time.
void SortByKey(std::vector<Place>& places) {
    std::vector<Place> sorted(places.size());
    std::vector<std::uint32_t> starts(1 << BitsAnAxis);
    for (int shift = 0; shift < 3 * BitsAnAxis; shift += BitsAnAxis) {
        const auto digit = [shift](const Place& place) { return (place.Key >> shift) & ((1 << BitsAnAxis) - 1); };
        std::fill(starts.begin(), starts.end(), 0);
        for (const Place& place : places)
            ++starts[digit(place)];
        std::uint32_t start = 0;
        for (std::uint32_t& count : starts)
            start += std::exchange(count, start);
        for (const Place& place : places)
            sorted[starts[digit(place)]++] = place;
        places.swap(sorted);
    }
}

} // namespace

void BoxHierarchy::Build(const std::vector<SelectBox>& boxes) {
    Order.clear();
    Levels.clear();
    if (boxes.empty())
        return;
    std::vector<Place> places = PlacesOf(boxes);
    if (places.size() > GroupSize)
        SortByKey(places);
    Order.reserve(places.size());
    for (const Place& place : places)
        Order.push_back(place.Item);

    std::vector<SelectBox> level((Order.size() + GroupSize - 1) / GroupSize);
    for (std::size_t i = 0; i < Order.size(); ++i)
        level[i / GroupSize].Grow(boxes[Order[i]]);
    while (level.size() > 1) {
        std::vector<SelectBox> next((level.size() + GroupSize - 1) / GroupSize);
        for (std::size_t i = 0; i < level.size(); ++i)
            next[i / GroupSize].Grow(level[i]);
        Levels.push_back(std::move(level));
        level = std::move(next);
    }
    Levels.push_back(std::move(level));
}
