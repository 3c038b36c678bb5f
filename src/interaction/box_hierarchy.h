#pragma once

#include "interaction/select_region.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Boxes of many items, bounded in groups of groups, so that a search for a place on the screen passes over most of
/// them. Items are known by their numbers. Built in linear time; built anew whenever an item moves.
class BoxHierarchy {
  public:
    /// Item i gets boxes[i].
    void Build(const std::vector<SelectBox>& boxes);

    /// Calls visit(item, inside) for every item whose box may meet the region, and for some others; with `inside` 1 its
    /// box certainly lies inside. In no order.
    template <class Visit>
    void Search(const SelectRegion& region, Visit visit) const;

  private:
    static constexpr std::size_t GroupSize = 8;

    struct Group {
        std::size_t Level, Index;
        bool Inside;
    };

    /// Neighbours in this order are neighbours in space. Groups of the lowest level are of items in this order, those
    /// of the next levels are of groups; the last level is a single one.
    std::vector<std::uint32_t> Order;
    std::vector<std::vector<SelectBox>> Levels;
};

template <class Visit>
void BoxHierarchy::Search(const SelectRegion& region, Visit visit) const {
    if (Levels.empty())
        return;
    std::vector<Group> waiting{{Levels.size() - 1, 0, false}};
    while (!waiting.empty()) {
        Group group = waiting.back();
        waiting.pop_back();
        if (!group.Inside) {
            const SelectRegion::Overlap overlap = region.Test(Levels[group.Level][group.Index]);
            if (overlap == SelectRegion::Outside)
                continue;
            group.Inside = overlap == SelectRegion::Inside;
        }
        const std::size_t members = group.Level ? Levels[group.Level - 1].size() : Order.size();
        const std::size_t first = group.Index * GroupSize, end = std::min(first + GroupSize, members);
        for (std::size_t member = first; member < end; ++member) {
            if (group.Level)
                waiting.push_back({group.Level - 1, member, group.Inside});
            else
                visit(Order[member], group.Inside);
        }
    }
}
