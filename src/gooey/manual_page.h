#pragma once

#include <string>
#include <vector>

// The text of a manual page: what is left of an HTML file without its layout.

/// A word, with the page that it leads to ("" without a link).
struct ManualWord {
    std::string Text;
    std::string Link;
    /// Follows the word before without a blank.
    bool Glued = false;
};

/// A paragraph, heading, or item of a list.
struct ManualBlock {
    bool Heading = false;
    /// Of lists: how deep.
    int Indent = 0;
    std::vector<ManualWord> Words;
};

struct ManualPage {
    std::string Title;
    std::vector<ManualBlock> Blocks;
};

/// Takes the text out of HTML, whatever its faults. Links to files with the ending ".html" lead to pages.
ManualPage ReadManualPage(const std::string& html);
