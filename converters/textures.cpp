#include "textures.h"

#include "base/memory.h"
#include "kirvo_file/png_output.h"
#include "textures/pictures.h"

#include <assimp/texture.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>
#include <strings.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_FAILURE_USERMSG
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

namespace converters {

namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

// The file of that name in a directory, whatever its case.
fs::path Matching(const fs::path& directory, const std::string& name) {
    if (IsFile(directory / name))
        return directory / name;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory, error))
        if (strcasecmp(entry.path().filename().c_str(), name.c_str()) == 0 && IsFile(entry.path()))
            return entry.path();
    return {};
}

bool IsPng(const std::string& bytes) {
    return bytes.starts_with("\x89PNG\r\n\x1A\n");
}

// Through a file that lies where nobody else can enter.
std::string PngOf(const std::string& path) {
    if (const std::string bytes = BytesOf(path); IsPng(bytes))
        return bytes;
    int width, height, channels;
    std::uint8_t* pixels = ReadImage(path.c_str(), width, height, channels);
    if (!pixels)
        return "";
    const char* prefix = std::getenv("KIRVO_TEMPORARY");
    std::string bytes;
    if (prefix && channels <= 4) {
        const std::string file = std::string(prefix) + "_image.png";
        if (WritePng(file, pixels, width, height, channels).empty())
            bytes = BytesOf(file);
        std::error_code ignored;
        fs::remove(file, ignored);
    }
    Free(pixels);
    return bytes;
}

// Writes pixels, rows from the top, as an image of the kind that every Kirvo reads.
bool WriteImage(const fs::path& path, const std::uint8_t* pixels, int width, int height, int channels) {
    constexpr std::size_t headerSize = 512;
    std::string bytes = {1, -38, 0, 1, 0, 3};
    for (const int size : {width, height, channels})
        bytes += {static_cast<char>(size >> 8), static_cast<char>(size)};
    bytes += {0, 0, 0, 0, 0, 0, 0, -1}; // smallest and largest value
    bytes.resize(headerSize, '\0');
    for (int channel = 0; channel < channels; ++channel)
        for (int row = height; row-- > 0;)
            for (int column = 0; column < width; ++column)
                bytes += static_cast<char>(pixels[(static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                                                   static_cast<std::size_t>(column)) *
                                                      static_cast<std::size_t>(channels) +
                                                  static_cast<std::size_t>(channel)]);
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(file.flush());
}

// An image of another kind as one of Kirvo's in the model's "textures"; empty when it cannot be read.
std::string ConvertedImage(const fs::path& path, const fs::path& modelDirectory) {
    constexpr int largest = 65535;
    int width = 0, height = 0, channels = 0;
    std::uint8_t* pixels = stbi_load(path.c_str(), &width, &height, &channels, 0);
    if (!pixels)
        return "";
    std::error_code error;
    const fs::path folder = modelDirectory / "textures", to = folder / (path.stem().string() + ".rgb");
    fs::create_directories(folder, error);
    const bool written = width <= largest && height <= largest && WriteImage(to, pixels, width, height, channels);
    stbi_image_free(pixels);
    return written ? to.string() : "";
}

} // namespace

std::string FindImage(const std::string& named, const fs::path& directory, const fs::path& modelDirectory) {
    std::string path = named;
    std::replace(path.begin(), path.end(), '\\', '/');
    if (path.empty() || path.find('\0') != std::string::npos)
        return "";
    const std::string name = fs::path(path).filename();
    std::vector<fs::path> tried = {directory / path};
    for (const fs::path& place : {directory, modelDirectory})
        for (const char* below : {"", "textures", "Textures", "images", "maps", "../textures"})
            tried.push_back(Matching(place / below, name));
    for (const fs::path& candidate : tried)
        if (!candidate.empty() && IsFile(candidate)) {
            std::error_code error;
            const fs::path found = fs::absolute(candidate, error).lexically_normal();
            return IsAnImageFile(found.c_str()) ? found.string() : ConvertedImage(found, modelDirectory);
        }
    return "";
}

std::string KeepEmbeddedImage(const aiTexture& image, const std::string& directory, const std::string& name) {
    const fs::path folder = fs::path(directory) / "textures";
    std::error_code error;
    fs::create_directories(folder, error);
    std::string path;
    if (image.mHeight == 0) { // a whole file
        const std::string bytes(reinterpret_cast<const char*>(image.pcData), image.mWidth);
        path = folder / (name + (IsPng(bytes) ? ".png" : bytes.starts_with("\xFF\xD8") ? ".jpg" : ".image"));
        std::ofstream file(path, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file.flush())
            return "";
        if (IsAnImageFile(path.c_str()))
            return path;
        const std::string converted = ConvertedImage(path, directory);
        fs::remove(path, error);
        return converted;
    }
    std::vector<std::uint8_t> pixels;
    for (std::size_t i = 0; i < static_cast<std::size_t>(image.mWidth) * image.mHeight; ++i)
        pixels.insert(pixels.end(), {image.pcData[i].r, image.pcData[i].g, image.pcData[i].b, image.pcData[i].a});
    path = folder / (name + ".rgb");
    return WriteImage(path, pixels.data(), static_cast<int>(image.mWidth), static_cast<int>(image.mHeight), 4) ? path
                                                                                                               : "";
}

std::vector<ExportedImage> ImagesOf(const Model& model, const std::string& directory) {
    std::vector<ExportedImage> images;
    std::set<std::string> taken;
    for (const Texture& texture : model.Textures) {
        ExportedImage image;
        std::string path = FindImage(texture.Path, directory, model.Directory);
        if (path.empty() && IsFile(texture.Path))
            path = texture.Path;
        if (!path.empty())
            image.Bytes = PngOf(path);
        if (!image.Bytes.empty()) {
            const std::string stem = fs::path(path).stem();
            image.Name = stem + ".png";
            for (int number = 2; !taken.insert(image.Name).second; ++number)
                image.Name = stem + "-" + std::to_string(number) + ".png";
        }
        images.push_back(image);
    }
    return images;
}

} // namespace converters
