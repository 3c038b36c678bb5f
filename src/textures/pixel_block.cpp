#include "textures/pixel_block.h"

#include "base/memory.h"

#include <cstring>

void FreePixels::operator()(std::uint8_t* pixels) const {
    Free(pixels);
}

bool PixelBlock::Make(int width, int height, int channels) {
    if (width < 1 || height < 1 || channels < 1)
        return false;
    const std::uint64_t pitch = (std::uint64_t(width) * std::uint64_t(channels) + 3) / 4 * 4;
    if (pitch > MostBytes / std::uint64_t(height))
        return false;
    const std::size_t size = pitch * std::uint64_t(height);
    Pixels.reset(static_cast<std::uint8_t*>(Allocate(size)));
    if (!Pixels)
        return false;
    std::memset(Pixels.get(), 0, size);
    Width = width;
    Height = height;
    Channels = channels;
    Pitch = pitch;
    return true;
}
