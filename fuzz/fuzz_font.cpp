// Any bytes as a font file: reading stays inside, and a font that is read can be written and read again.
#include "memory_file.h"

#include "tools/fonts.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static MemoryFile file;
    Font* font = ReadFont(file.Fill(data, size));
    if (!font)
        return 0;
    const std::string bytes = FontFileOf(*font);
    FreeFont(font);
    font = ReadFont(file.Fill(bytes.data(), bytes.size()));
    if (!font || FontFileOf(*font) != bytes)
        std::abort();
    FreeFont(font);
    return 0;
}
