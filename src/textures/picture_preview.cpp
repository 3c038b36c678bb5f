#include "textures/picture_preview.h"

#include "textures/pictures.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::int64_t MostPixels = std::int64_t{1} << 25;
constexpr int Ground = 0x60;

/// Sums of the pixels that become one.
struct PixelSum {
    std::int64_t Channels[3] = {};
    std::int64_t Count = 0;

    /// A pixel of a PixelBlock: its channels lie in reverse order, alpha first where there is one.
    void Add(const std::uint8_t* pixel, int channels) {
        const bool hasAlpha = channels == 2 || channels == 4;
        const int alpha = hasAlpha ? pixel[0] : 255;
        const bool grey = channels <= 2;
        for (int i = 0; i < 3; ++i) {
            const int value = pixel[grey ? channels - 1 : channels - 1 - i];
            Channels[i] += (value * alpha + Ground * (255 - alpha)) / 255;
        }
        ++Count;
    }

    std::uint32_t Packed() const {
        std::uint32_t packed = 0;
        for (int i = 0; i < 3; ++i)
            packed |= static_cast<std::uint32_t>(Channels[i] / std::max<std::int64_t>(Count, 1)) << 8 * i;
        return packed;
    }
};

/// The first of `from` pixels that belong to pixel i of `to`.
int FirstOf(int i, int from, int to) {
    return static_cast<int>(static_cast<std::int64_t>(i) * from / to);
}

std::uint32_t Reduced(const PixelBlock& block, const FilePicture& picture, int x, int y) {
    const int left = FirstOf(x, block.Width, picture.Width), bottom = FirstOf(y, block.Height, picture.Height);
    const int right = std::max(left + 1, FirstOf(x + 1, block.Width, picture.Width));
    const int top = std::max(bottom + 1, FirstOf(y + 1, block.Height, picture.Height));
    PixelSum sum;
    for (int row = bottom; row < top; ++row)
        for (int column = left; column < right; ++column)
            sum.Add(block.Row(row) + static_cast<std::size_t>(column) * block.Channels, block.Channels);
    return sum.Packed();
}

} // namespace

FilePicture MakePicturePreview(const char* path) {
    FilePicture picture;
    PictureSize size;
    if (ReadPictureSize(path, size) == PictureFormat::None)
        return picture;
    char text[60];
    std::snprintf(text, sizeof text, "%d x %d x %d", size.Width, size.Height, size.Channels);
    picture.Description = text;
    PixelBlock block;
    if (std::int64_t{size.Width} * size.Height > MostPixels)
        return picture;
    if (!ReadPicture(path, block).empty()) {
        picture.Description = "cannot be read";
        return picture;
    }
    const int longest = std::max({block.Width, block.Height, FilePictureSize});
    picture.Width = std::max(1, block.Width * FilePictureSize / longest);
    picture.Height = std::max(1, block.Height * FilePictureSize / longest);
    for (int y = 0; y < picture.Height; ++y)
        for (int x = 0; x < picture.Width; ++x)
            picture.Pixels.push_back(Reduced(block, picture, x, y));
    return picture;
}
