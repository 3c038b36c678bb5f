#include "textures/orientation.h"

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t TiffHeaderSize = 8, EntrySize = 12;
constexpr unsigned OrientationTag = 0x0112, TypeShort = 3;

/// Numbers of either byte order out of a block; beyond its end all are 0.
struct TiffReader {
    const std::uint8_t* Bytes;
    std::size_t Size;
    bool LittleEndian;

    unsigned Number(std::size_t place, unsigned width) const {
        if (place > Size || Size - place < width)
            return 0;
        unsigned number = 0;
        for (unsigned i = 0; i < width; ++i)
            number = number << 8 | Bytes[place + (LittleEndian ? width - 1 - i : i)];
        return number;
    }
};

} // namespace

int OrientationIn(const std::uint8_t* exif, std::size_t size) {
    if (size < TiffHeaderSize || (std::memcmp(exif, "II", 2) != 0 && std::memcmp(exif, "MM", 2) != 0))
        return OrientationUpright;
    const TiffReader reader = {exif, size, exif[0] == 'I'};
    const std::size_t directory = reader.Number(4, 4);
    const unsigned count = reader.Number(directory, 2);
    for (unsigned i = 0; i < count; ++i) {
        const std::size_t entry = directory + 2 + i * EntrySize;
        if (entry + EntrySize > size)
            break;
        if (reader.Number(entry, 2) != OrientationTag)
            continue;
        const unsigned value = reader.Number(entry + 8, 2);
        const bool known = value >= OrientationUpright && value <= OrientationThreeQuarterTurn;
        return known && reader.Number(entry + 2, 2) == TypeShort ? static_cast<int>(value) : OrientationUpright;
    }
    return OrientationUpright;
}

bool TurnUpright(PixelBlock& block, int orientation) {
    if (orientation <= OrientationUpright || orientation > OrientationThreeQuarterTurn)
        return true;
    const bool transposed = orientation >= OrientationTransposed;
    PixelBlock turned;
    if (!turned.Make(transposed ? block.Height : block.Width, transposed ? block.Width : block.Height, block.Channels))
        return false;
    const bool fromRight = orientation == OrientationMirrored || orientation == OrientationHalfTurn ||
                           orientation == OrientationTransverse || orientation == OrientationThreeQuarterTurn;
    const bool fromBottom = orientation == OrientationHalfTurn || orientation == OrientationUpsideDown ||
                            orientation == OrientationQuarterTurn || orientation == OrientationTransverse;
    const auto channels = static_cast<std::size_t>(block.Channels);
    for (int down = 0; down < turned.Height; ++down) {
        std::uint8_t* to = turned.Row(turned.Height - 1 - down);
        for (int x = 0; x < turned.Width; ++x, to += channels) {
            const int across = transposed ? down : x, along = transposed ? x : down;
            const int fromX = fromRight ? block.Width - 1 - across : across;
            const int fromDown = fromBottom ? block.Height - 1 - along : along;
            std::memcpy(to, block.Row(block.Height - 1 - fromDown) + static_cast<std::size_t>(fromX) * channels,
                        channels);
        }
    }
    block = std::move(turned);
    return true;
}
