#pragma once

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <jpeglib.h>
#include <png.h>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// A PNG file of top-down rows as libpng takes them, with whatever chunks `before` and `info` add.
inline Bytes MadePng(int width, int height, int depth, int kind, const std::vector<Bytes>& rows,
                     const std::function<void(png_structp, png_infop)>& setUp = {}) {
    Bytes out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &out,
        [](png_structp writer, png_bytep data, std::size_t count) {
            Bytes& file = *static_cast<Bytes*>(png_get_io_ptr(writer));
            file.insert(file.end(), data, data + count);
        },
        [](png_structp) {});
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), depth, kind,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (setUp)
        setUp(png, info);
    png_write_info(png, info);
    for (const Bytes& row : rows)
        png_write_row(png, row.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return out;
}

/// A JPEG file of top-down rows, with Exif data that tell an orientation unless that is 0.
inline Bytes MadeJpeg(int width, int height, int channels, const std::vector<Bytes>& rows, int orientation = 0,
                      bool progressive = false) {
    jpeg_compress_struct jpeg = {};
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* out = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &out, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = channels;
    jpeg.in_color_space = channels == 1 ? JCS_GRAYSCALE : channels == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 98, TRUE);
    if (progressive)
        jpeg_simple_progression(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    if (orientation) {
        const Bytes exif = {'E', 'x', 'i', 'f',  0,    0, 'M', 'M', 0, 42, 0, 0, 0,
                            8,   0,   1,   0x01, 0x12, 0, 3,   0,   0, 0,  1, 0, static_cast<std::uint8_t>(orientation),
                            0,   0,   0,   0,    0,    0};
        jpeg_write_marker(&jpeg, JPEG_APP0 + 1, exif.data(), static_cast<unsigned>(exif.size()));
    }
    for (const Bytes& row : rows) {
        JSAMPROW line = const_cast<JSAMPROW>(row.data());
        jpeg_write_scanlines(&jpeg, &line, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    const Bytes file(out, out + size);
    std::free(out);
    return file;
}

inline void WriteBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
