#include "structure/lod_scale.h"

#include <algorithm>
#include <cmath>
#include <vector>

double LodScale::DistanceAt(int y) const {
    constexpr double least = 0.2;
    const double share = (Top() - y) / static_cast<double>(Length) * HalfWidth;
    return Nearest * HalfWidth / (share > 0 ? share : least);
}

int LodScale::HeightOf(double distance) const {
    return static_cast<int>(std::lround(Top() - Nearest / distance * Length));
}

void SpreadLabels(std::span<int> heights, int gap, int bottom, int top) {
    // Labels that would touch are held together, as far from their places on one side as on the other.
    struct Group {
        double Lowest; // of its first label
        int Count;
    };

    const auto withinEnds = [&](const Group& group) -> Group {
        const double highest = std::max(bottom, top - (group.Count - 1) * gap);
        return {std::clamp<double>(group.Lowest, bottom, highest), group.Count};
    };
    std::vector<Group> groups;
    for (const int height : heights) {
        Group group = withinEnds({static_cast<double>(height), 1});
        while (!groups.empty() && groups.back().Lowest + groups.back().Count * gap > group.Lowest) {
            const Group& below = groups.back();
            const int count = below.Count + group.Count;
            group = withinEnds(
                {(below.Lowest * below.Count + (group.Lowest - below.Count * gap) * group.Count) / count, count});
            groups.pop_back();
        }
        groups.push_back(group);
    }
    std::size_t label = 0;
    for (const Group& group : groups)
        for (int i = 0; i < group.Count; ++i)
            heights[label++] = static_cast<int>(std::lround(group.Lowest)) + i * gap;
}
