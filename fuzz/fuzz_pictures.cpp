// Any bytes as a PNG or JPEG file: decoding stays inside its buffers and its limits, and tells why it gives nothing.
#include "textures/pictures.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    PixelBlock block;
    const bool decoded = DecodePicture(data, size, block).empty();
    if (decoded != static_cast<bool>(block))
        std::abort();
    if (decoded && block.Pitch * static_cast<std::size_t>(block.Height) > PixelBlock::MostBytes)
        std::abort();
    return 0;
}
