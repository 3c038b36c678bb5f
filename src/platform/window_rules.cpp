#include "platform/window_rules.h"

#include <algorithm>
#include <cmath>

namespace gl {

namespace {

int Scaled(int length, int numerator, int denominator) {
    return static_cast<int>(std::lround(static_cast<double>(length) * numerator / denominator));
}

// The largest base + n * step within the wish, n at least 0, but not below the minimum.
int Stepped(int wish, int base, int step, int minimum) {
    if (step <= 0)
        return wish;
    int steps = std::max(0, (wish - base) / step);
    while (base + steps * step < minimum)
        steps++;
    return base + steps * step;
}

} // namespace

ContentSize WithinLimits(const SizeRules& rules, ContentSize wish) {
    const int minimumWidth = std::max(rules.MinimumWidth, SmallestWidth);
    const int minimumHeight = std::max(rules.MinimumHeight, SmallestHeight);
    const int maximumWidth = rules.MaximumWidth > 0 ? rules.MaximumWidth : LargestSize;
    const int maximumHeight = rules.MaximumHeight > 0 ? rules.MaximumHeight : LargestSize;
    return {std::clamp(wish.Width, minimumWidth, std::max(minimumWidth, maximumWidth)),
            std::clamp(wish.Height, minimumHeight, std::max(minimumHeight, maximumHeight))};
}

ContentSize AllowedSize(const SizeRules& rules, ContentSize wish, Leading leading) {
    ContentSize size = WithinLimits(rules, wish);
    if (rules.AspectX > 0 && rules.AspectY > 0) {
        auto heightFor = [&](int width) {
            return Scaled(width - rules.FudgeX, rules.AspectY, rules.AspectX) + rules.FudgeY;
        };
        auto widthFor = [&](int height) {
            return Scaled(height - rules.FudgeY, rules.AspectX, rules.AspectY) + rules.FudgeX;
        };
        const bool widthIsLarger = heightFor(size.Width) >= size.Height;
        const bool widthLeads = leading == Leading::Width || (leading == Leading::Larger && widthIsLarger) ||
                                (leading == Leading::Smaller && !widthIsLarger);
        if (widthLeads)
            size.Height = heightFor(size.Width);
        else
            size.Width = widthFor(size.Height);
        // Where the following side meets a limit, it leads instead.
        const ContentSize limited = WithinLimits(rules, size);
        if (limited.Height != size.Height)
            size = {widthFor(limited.Height), limited.Height};
        else if (limited.Width != size.Width)
            size = {limited.Width, heightFor(limited.Width)};
    }
    const ContentSize least = WithinLimits(rules, {0, 0});
    size.Width = Stepped(size.Width, rules.FudgeX, rules.StepX, least.Width);
    size.Height = Stepped(size.Height, rules.FudgeY, rules.StepY, least.Height);
    return WithinLimits(rules, size);
}

ContentSize OpeningSize(const SizeRules& rules, ContentSize screen) {
    if (rules.HasPlace)
        return {std::clamp(rules.PlaceWidth, SmallestWidth, LargestSize),
                std::clamp(rules.PlaceHeight, SmallestHeight, LargestSize)};
    if (rules.PreferredWidth > 0)
        return AllowedSize(rules, {rules.PreferredWidth, rules.PreferredHeight}, Leading::Larger);
    if (rules.MinimumWidth > 0 || rules.MinimumHeight > 0)
        return AllowedSize(rules,
                           {std::max(rules.MinimumWidth, std::min(rules.MinimumWidth * 3 / 2, screen.Width)),
                            std::max(rules.MinimumHeight, std::min(rules.MinimumHeight * 3 / 2, screen.Height))},
                           Leading::Smaller);
    return AllowedSize(rules, {screen.Width / 2, screen.Height / 2}, Leading::Smaller);
}

} // namespace gl
