// Pictures of the screen and of windows, as PNG files and as pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gl {

// Rows from the top down, 4 bytes a pixel: red, green, blue, 255.
struct Picture {
    int Width = 0, Height = 0; // screen pixels
    std::vector<std::uint8_t> Pixels;
    // 0x00BBGGRR of the pixel at x from the left, y from the bottom; 0 outside.
    std::uint32_t At(int x, int y) const;
};

// The whole screen as it is shown, frames, overlay and (unless left out) the pointer included.
Picture ScreenPicture(bool withPointer = true);
// A window's content as it is shown, its subwindows included, without what lies over it.
Picture WindowPicture(int id);

// Writes a PNG file. False with the reason when it cannot be written.
bool WritePicture(const Picture& picture, const std::string& path, std::string& reason);
// Reads a PNG file of 8 bits a channel, for comparisons.
bool ReadPicture(const std::string& path, Picture& picture, std::string& reason);

} // namespace gl
