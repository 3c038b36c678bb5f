#include "files/text_scanner.h"

#include <charconv>
#include <limits>

namespace {

constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

bool IsWhiteSpace(char c) {
    return WhiteSpace.find(c) != std::string_view::npos;
}

template <class Number>
struct ReadNumber {
    Number Value;
    std::size_t Length; // 0: no number
    bool OutOfRange;
};

template <class Number>
ReadNumber<Number> NumberAt(std::string_view text) {
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    if (plus)
        text.remove_prefix(1);
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool outOfRange = error == std::errc::result_out_of_range;
    if (error != std::errc() && !outOfRange)
        return {0, 0, false};
    return {value, static_cast<std::size_t>(end - text.data()) + plus, outOfRange};
}

} // namespace

bool TextScanner::TakeLine(std::string_view& line) {
    if (Place == Text.size())
        return false;
    const std::size_t end = std::min(Text.find('\n', Place), Text.size());
    line = Text.substr(Place, end - Place);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    Place = std::min(end + 1, Text.size());
    return true;
}

bool TextScanner::Take(const char* pattern) {
    for (; *pattern; ++pattern) {
        if (*pattern == ' ') {
            SkipWhiteSpace();
            continue;
        }
        if (Place == Text.size() || Text[Place] != *pattern)
            return false;
        ++Place;
    }
    return true;
}

bool TextScanner::Take(int& value) {
    SkipWhiteSpace();
    const auto number = NumberAt<int>(Text.substr(Place));
    if (number.Length == 0)
        return false;
    using Limits = std::numeric_limits<int>;
    value = !number.OutOfRange ? number.Value : Text[Place] == '-' ? Limits::min() : Limits::max();
    Place += number.Length;
    return true;
}

bool TextScanner::Take(float& value) {
    SkipWhiteSpace();
    const auto number = NumberAt<float>(Text.substr(Place));
    if (number.Length == 0)
        return false;
    value = number.Value;
    if (number.OutOfRange) {
        // Too large or too small is not told apart; the wider type knows, but for what no file holds in earnest.
        const auto wide = NumberAt<double>(Text.substr(Place, number.Length));
        value = wide.OutOfRange ? std::numeric_limits<float>::infinity() : static_cast<float>(wide.Value);
    }
    Place += number.Length;
    return true;
}

void TextScanner::SkipWhiteSpace() {
    while (Place < Text.size() && IsWhiteSpace(Text[Place]))
        ++Place;
}
