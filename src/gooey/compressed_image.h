#pragma once

#include <cstdint>

// Pictures stored in the program: bytes compressed by runs and by references to what came before.

/// Bytes that the data gives when decompressed.
std::uint32_t DecompressedSize(const unsigned char* data);

/// Decompresses into DecompressedSize(data) bytes at `output`. 0 when a token would write beyond them, or copy from
/// what is not there.
int DecompressData(const unsigned char* data, unsigned char* output);

/// A picture of the program, kept decompressed after it was drawn first: packed pixels 0xAABBGGRR, rows from the
/// bottom.
struct StoredImage {
    const unsigned char* Data;
    int Width, Height;
    /// Halved in brightness.
    bool Dimmed;
    std::uint32_t* Pixels;
};

/// Draws it with its lower left corner at (x, y) of the current window, blended over what is there. Data that does not
/// decompress end the program with status 666.
void DrawImage(StoredImage& image, int x, int y);

/// Halves red, green and blue of a packed pixel; the alpha stays.
constexpr std::uint32_t DimmedPixel(std::uint32_t pixel) {
    return (pixel & 0xFF000000) + ((pixel & 0x00FEFEFE) >> 1);
}
