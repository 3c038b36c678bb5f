#pragma once

#include <string>

/// A pattern for GoogleTest's death tests that matches this whole text and nothing else.
inline std::string Exactly(const std::string& text) {
    std::string pattern = "^";
    for (const char c : text) {
        if (std::string_view(".[]{}()*+?|^$\\").find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern + "$";
}
