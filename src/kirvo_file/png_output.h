#pragma once

#include <cstdint>
#include <string>

/// Writes a pixel block as ReadImage gives it, of 1 to 4 channels, as a PNG file. Gives the reason of a failure,
/// nothing on success; a file that could not be finished is removed.
std::string WritePng(const std::string& path, const std::uint8_t* pixels, int width, int height, int channels);
