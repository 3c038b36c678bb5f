#include "platform/damage.h"

#include <gtest/gtest.h>

#include <random>

using namespace gl;

namespace {

bool Covers(const std::vector<PixelBox>& boxes, int x, int y) {
    for (const PixelBox& box : boxes)
        if (x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height)
            return true;
    return false;
}

TEST(Damage, FarBoxesStayApartAndNearOnesAreJoined) {
    DamageList list;
    list.Add({0, 0, 10, 10});
    list.Add({500, 500, 10, 10});
    list.Add({10, 0, 10, 10});
    list.Add({0, 0, 0, 5});
    const std::vector<PixelBox> boxes = list.Take();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_TRUE(list.Empty());
    long area = 0;
    for (const PixelBox& box : boxes)
        area += static_cast<long>(box.width) * box.height;
    EXPECT_EQ(area, 300);
}

TEST(Damage, ManyBoxesAreCoveredByFewThatDoNotOverlap) {
    std::mt19937 random(7);
    auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 200; round++) {
        DamageList list;
        std::vector<PixelBox> added;
        for (int i = 0; i < 60; i++) {
            added.push_back({below(900), below(900), 1 + below(80), 1 + below(80)});
            list.Add(added.back());
        }
        const std::vector<PixelBox> boxes = list.Take();
        EXPECT_LE(boxes.size(), 12U);
        for (std::size_t i = 0; i < boxes.size(); i++)
            for (std::size_t j = 0; j < i; j++)
                EXPECT_TRUE(IntersectionOf(boxes[i], boxes[j]).empty());
        for (const PixelBox& box : added)
            for (int corner = 0; corner < 4; corner++)
                EXPECT_TRUE(
                    Covers(boxes, box.x + (corner & 1) * (box.width - 1), box.y + (corner >> 1) * (box.height - 1)));
    }
}

} // namespace
