#include "kirvo_file/png_output.h"

#include "base/file_replacement.h"

#include <cerrno>
#include <cstring>
#include <png.h>

std::string WritePng(const std::string& path, const std::uint8_t* pixels, int width, int height, int channels) {
    // The block has its channels in reverse.
    static constexpr png_uint_32 formats[] = {PNG_FORMAT_GRAY, PNG_FORMAT_AG, PNG_FORMAT_BGR, PNG_FORMAT_ABGR};
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = formats[channels - 1];
    // Rows from the bottom are a negative stride.
    const png_int_32 stride = (width * channels + 3) / 4 * 4;
    FileReplacement file(path.c_str());
    errno = file.Stream() ? 0 : errno;
    if (file.Stream() && png_image_write_to_stdio(&image, file.Stream(), 0, pixels, -stride, nullptr) && file.Commit())
        return "";
    const int reason = errno;
    const std::string message = reason ? std::strerror(reason) : image.message;
    png_image_free(&image);
    return message;
}
