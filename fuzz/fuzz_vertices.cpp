// Any bytes as a file of coordinates: reading stays inside, and what it gives can be used.
#include "memory_file.h"

#include "tools/vertex_file.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static MemoryFile file;
    const char* path = file.Fill(data, size);
    for (const int dimensions : {2, 3}) {
        const VertexFile read = ReadVertexFile(path, dimensions, nullptr);
        if (!read.Error.empty() || read.Places.size() + read.UnreadableLines > size + 1)
            std::abort();
        for (const auto& place : read.Places)
            for (const double coordinate : place)
                if (!std::isfinite(static_cast<float>(coordinate)))
                    std::abort();
    }
    return 0;
}
