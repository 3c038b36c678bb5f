#pragma once

#include "textures/pixel_block.h"

#include <cstddef>
#include <cstdint>
#include <string>

// Pictures in PNG files: grey or colours, with or without alpha, of 1 to 16 bits a value, interlaced or not. Colour
// profiles and gammas are left out of account. Damaged files never give a picture.

/// What the header of a picture says.
struct PictureSize {
    int Width = 0, Height = 0, Channels = 0;
};

/// True when the bytes begin with the header of a PNG file.
bool ReadPngSize(const std::uint8_t* bytes, std::size_t count, PictureSize& size);

/// Decodes a whole file. Nothing on success, otherwise why there is no picture: an English sentence.
std::string DecodePng(const std::uint8_t* bytes, std::size_t count, PixelBlock& block);
