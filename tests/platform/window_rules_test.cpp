#include "platform/window_rules.h"

#include <gtest/gtest.h>

using namespace gl;

namespace {

SizeRules Rules(ContentSize minimum, ContentSize maximum, ContentSize aspect, ContentSize step, ContentSize fudge) {
    SizeRules rules;
    rules.MinimumWidth = minimum.Width;
    rules.MinimumHeight = minimum.Height;
    rules.MaximumWidth = maximum.Width;
    rules.MaximumHeight = maximum.Height;
    rules.AspectX = aspect.Width;
    rules.AspectY = aspect.Height;
    rules.StepX = step.Width;
    rules.StepY = step.Height;
    rules.FudgeX = fudge.Width;
    rules.FudgeY = fudge.Height;
    return rules;
}

TEST(WindowRules, GiveTheAllowedSizeNextToAWish) {
    const SizeRules limits = Rules({200, 100}, {400, 300}, {}, {}, {});
    // A view of 3 : 2 above a band of 60, and a square one.
    const SizeRules view = Rules({225, 150}, {}, {3, 2}, {}, {0, 60});
    const SizeRules square = Rules({309, 416}, {}, {1, 1}, {}, {0, 107});
    // Cells of 74 x 91 within borders of 28 and 183.
    const SizeRules cells = Rules({612, 231}, {}, {}, {74, 91}, {28, 183});

    const struct {
        const char* What;
        const SizeRules& Rules;
        ContentSize Wish;
        Leading Lead;
        ContentSize Expected;
    } cases[] = {
        {"free within limits", limits, {250, 150}, Leading::Larger, {250, 150}},
        {"not below the minimum", limits, {10, 10}, Leading::Larger, {200, 100}},
        {"not above the maximum", limits, {1000, 1000}, Leading::Larger, {400, 300}},
        {"the width leads", view, {600, 1000}, Leading::Width, {600, 460}},
        {"the height leads", view, {10, 460}, Leading::Height, {600, 460}},
        {"the larger side leads", view, {600, 200}, Leading::Larger, {600, 460}},
        {"a fit keeps within the wish", view, {1600, 460}, Leading::Smaller, {600, 460}},
        {"the minimum with its aspect", view, {1, 1}, Leading::Larger, {225, 210}},
        {"the minimum of a square with a band", square, {1, 1}, Leading::Larger, {309, 416}},
        {"a square grows with its band", square, {500, 1}, Leading::Width, {500, 607}},
        {"whole cells only",
         cells,
         {28 + 74 * 9 + 73, 183 + 91 * 3 + 90},
         Leading::Larger,
         {28 + 74 * 9, 183 + 91 * 3}},
        {"the first cells above the minimum", cells, {1, 1}, Leading::Larger, {28 + 74 * 8, 183 + 91}},
    };

    for (const auto& test : cases) {
        const ContentSize size = AllowedSize(test.Rules, test.Wish, test.Lead);
        EXPECT_EQ(size.Width, test.Expected.Width) << test.What;
        EXPECT_EQ(size.Height, test.Expected.Height) << test.What;
    }
}

TEST(WindowRules, AMaximumOfOneSideHoldsBackTheOther) {
    const SizeRules rules = Rules({}, {1000, 200}, {2, 1}, {}, {});
    const ContentSize size = AllowedSize(rules, {900, 100}, Leading::Width);
    EXPECT_EQ(size.Width, 400);
    EXPECT_EQ(size.Height, 200);
}

TEST(WindowRules, OpeningPrefersThePlaceThenTheSizeThenMoreThanTheMinimum) {
    SizeRules rules = Rules({560, 250}, {}, {}, {}, {});
    const ContentSize screen{1600, 1200};
    EXPECT_EQ(OpeningSize(rules, screen).Width, 840);
    rules.PreferredWidth = 600;
    rules.PreferredHeight = 300;
    EXPECT_EQ(OpeningSize(rules, screen).Width, 600);
    rules.HasPlace = true;
    rules.PlaceWidth = 440;
    rules.PlaceHeight = 75;
    EXPECT_EQ(OpeningSize(rules, screen).Width, 440) << "a place wins over the minimum";
    EXPECT_EQ(OpeningSize({}, screen).Height, 600);
}

} // namespace
