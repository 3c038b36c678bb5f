#pragma once

#include "textures/png_picture.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Image files of every kind that serves as a texture: those of textures/image_file.h, PNG and JPEG. What a file is
// shows in its first bytes, whatever its name.

enum class PictureFormat { None, Image, Png, Jpeg };

/// What the header says; None when the file is no image. Whether all of it can be read shows when it is.
PictureFormat ReadPictureSize(const char* name, PictureSize& size);

/// 1 when the header is that of an image.
int IsAnImageFile(const char* name);

/// Reads a whole image. Nothing on success, otherwise why there is none: a sentence for the user, the block being as it
/// was. May be called from several threads at once.
std::string ReadPicture(const char* name, PixelBlock& block);
/// The same for a file's bytes in memory: PNG and JPEG only.
std::string DecodePicture(const std::uint8_t* bytes, std::size_t count, PixelBlock& block);

/// Reads a whole image as the values of a PixelBlock. Null when it is damaged. The block is released with Free; the
/// sizes are set as soon as the header has been read.
std::uint8_t* ReadImage(const char* name, int& xSize, int& ySize, int& zSize);

/// Reads many images, on all processors at once, and hands each over in the order of the names, on this thread. Only as
/// many are kept waiting as their turn to come needs.
void ReadPictures(const std::vector<std::string>& names,
                  const std::function<void(std::size_t index, PixelBlock& block, const std::string& problem)>& take);
