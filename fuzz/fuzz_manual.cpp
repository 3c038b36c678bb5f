// Any bytes as a page of the manual: its text, whatever its faults.
#include "gooey/manual_page.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string html(reinterpret_cast<const char*>(data), size);
    std::size_t letters = 0;
    for (const ManualBlock& block : ReadManualPage(html).Blocks)
        for (const ManualWord& word : block.Words)
            letters += word.Text.size();
    // Nothing is made up: an entity is longer than what it stands for.
    if (letters > size)
        std::abort();
    return 0;
}
