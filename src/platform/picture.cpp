#include "platform/picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <png.h>

namespace gl {

namespace {

png_image Header(const Picture& picture) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.format = PNG_FORMAT_RGBA;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    return image;
}

// A negative row length lays the rows out from the bottom.
int BottomUp(const Picture& picture) {
    return -4 * picture.width;
}

} // namespace

bool WritePng(const Picture& picture, const std::string& path, std::string& error) {
    png_image image = Header(picture);
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.pixels.data(), BottomUp(picture), nullptr))
        return true;
    error = path + ": " + image.message;
    return false;
}

bool ReadPng(Picture& picture, const std::string& path, std::string& error) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str())) {
        image.format = PNG_FORMAT_RGBA;
        picture.width = static_cast<int>(image.width);
        picture.height = static_cast<int>(image.height);
        picture.pixels.assign(static_cast<size_t>(picture.width) * picture.height, 0);
        if (png_image_finish_read(&image, nullptr, picture.pixels.data(), BottomUp(picture), nullptr))
            return true;
    }
    error = path + ": " + image.message;
    png_image_free(&image);
    return false;
}

long DifferingPixels(const Picture& a, const Picture& b, int tolerance, Picture* difference) {
    if (a.width != b.width || a.height != b.height)
        return std::max<long>(static_cast<long>(a.pixels.size()), static_cast<long>(b.pixels.size()));
    if (difference)
        *difference = a;
    long count = 0;
    for (size_t i = 0; i < a.pixels.size(); i++) {
        int most = 0;
        for (int shift = 0; shift < 32; shift += 8)
            most = std::max(most, std::abs(static_cast<int>(a.pixels[i] >> shift & 255) -
                                           static_cast<int>(b.pixels[i] >> shift & 255)));
        if (most > tolerance)
            count++;
        if (difference)
            difference->pixels[i] = most > tolerance ? 0xFFFFFFFFu : 0xFF000000u | (a.pixels[i] >> 2 & 0x3F3F3F);
    }
    return count;
}

} // namespace gl
