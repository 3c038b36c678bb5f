#pragma once

#include "textures/png_picture.h"

// Pictures in JPEG files: grey or colours, of 8 bits a value, progressive or not, turned as the camera says. Colour
// profiles are left out of account. Damaged files never give a picture.

/// True when the bytes begin like a JPEG file with a frame in it.
bool ReadJpegSize(const std::uint8_t* bytes, std::size_t count, PictureSize& size);

/// Decodes a whole file. Nothing on success, otherwise why there is no picture: an English sentence.
std::string DecodeJpeg(const std::uint8_t* bytes, std::size_t count, PixelBlock& block);
