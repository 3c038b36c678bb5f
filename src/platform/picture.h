// Pictures in memory and in PNG files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gl {

// Rows from the bottom, each pixel packed 0xAABBGGRR.
struct Picture {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;

    uint32_t& at(int x, int y) { return pixels[static_cast<size_t>(y) * width + x]; }

    uint32_t at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// False, with one line in `error`, when the file cannot be written or read.
bool WritePng(const Picture& picture, const std::string& path, std::string& error);
bool ReadPng(Picture& picture, const std::string& path, std::string& error);

// The number of pixels of which a channel differs by more than `tolerance`; every pixel when the sizes differ. With
// `difference`, a picture that shows where: differing pixels white, the others dimmed.
long DifferingPixels(const Picture& a, const Picture& b, int tolerance, Picture* difference);

} // namespace gl
