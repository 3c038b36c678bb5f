#pragma once

#include "model.h"

#include <filesystem>

struct aiTexture;

namespace converters {

/// The image that a file names: as named, beside the file or the model, or in "textures" there; upper and lower case
/// count only when two differ in nothing else. Empty when there is none.
std::string FindImage(const std::string& named, const std::filesystem::path& directory,
                      const std::filesystem::path& modelDirectory);

/// Writes an image that a file holds to `directory`/textures under the name and the image's ending. Its path; empty
/// when it cannot be written.
std::string KeepEmbeddedImage(const aiTexture& image, const std::string& directory, const std::string& name);

/// An image for another program.
struct ExportedImage {
    std::string Name;  // of the file beside the exported one; empty: the image is not there
    std::string Bytes; // a PNG file
};

/// The images of a model as PNG files, named after the originals; equal names are told apart by numbers.
std::vector<ExportedImage> ImagesOf(const Model& model, const std::string& directory);

} // namespace converters
