// Any bytes are a defaults file: reading them leaves values within their bounds, and what is then written is read back
// to the same.

#include "shell/defaults.h"
#include "shell/defaults_table.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

[[noreturn]] void Fail(const char* what, const std::string& text) {
    std::fprintf(stderr, "%s:\n%s\n", what, text.c_str());
    std::abort();
}

void Reset() {
    for (const DefaultsEntry& entry : DefaultsTable) {
        if (entry.Range)
            *entry.Values[0] = entry.Range->Otherwise;
        if (entry.Opened)
            *entry.Opened = 0;
        if (entry.Text)
            entry.Text[0] = '\0';
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Reset();
    ApplyDefaults({reinterpret_cast<const char*>(data), size});
    for (const DefaultsEntry& entry : DefaultsTable)
        if (entry.Range && (*entry.Values[0] < entry.Range->Least || *entry.Values[0] > entry.Range->Most))
            Fail("out of bounds", entry.Key);
    const std::string text = DefaultsText();
    ApplyDefaults(text);
    if (DefaultsText() != text)
        Fail("not read back", text + "\n---\n" + DefaultsText());
    return 0;
}
