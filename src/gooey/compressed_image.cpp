#include "gooey/compressed_image.h"

#include "gooey/messages.h"

#include "base/debug.h"
#include "base/memory.h"

#include "platform/drawing.h"
#include "platform/state.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr int SizeBytes = 4;
/// Control bytes from here on copy what came before.
constexpr unsigned FirstReference = 128;
/// From a reference's control byte to its length.
constexpr unsigned ReferenceBias = 125;

bool Decompress(StoredImage& image) {
    std::uint32_t size = DecompressedSize(image.Data);
    if (size != static_cast<std::uint32_t>(image.Width) * image.Height * sizeof(std::uint32_t))
        return false;
    image.Pixels = static_cast<std::uint32_t*>(Allocate(size));
    if (!image.Pixels || !DecompressData(image.Data, reinterpret_cast<unsigned char*>(image.Pixels)))
        return false;
    if (image.Dimmed)
        for (int i = 0; i < image.Width * image.Height; ++i)
            image.Pixels[i] = DimmedPixel(image.Pixels[i]);
    Trace("decompressed %d bytes\n", static_cast<int>(size));
    return true;
}

} // namespace

std::uint32_t DecompressedSize(const unsigned char* data) {
    return std::uint32_t{data[0]} << 24 | data[1] << 16 | data[2] << 8 | data[3];
}

int DecompressData(const unsigned char* data, unsigned char* output) {
    std::uint32_t size = DecompressedSize(data), out = 0;
    const unsigned char* in = data + SizeBytes;
    while (out < size) {
        unsigned control = *in++;
        if (control < FirstReference) {
            unsigned length = control + 1;
            if (length > size - out)
                return 0;
            std::memcpy(output + out, in, length);
            in += length;
            out += length;
            continue;
        }
        unsigned length = control - ReferenceBias, distance = *in++ + 1u;
        if (length > size - out || distance > out)
            return 0;
        // The source may overlap what is being written: byte by byte.
        for (unsigned i = 0; i < length; ++i, ++out)
            output[out] = output[out - distance];
    }
    return 1;
}

void DrawImage(StoredImage& image, int x, int y) {
    if (!image.Pixels && !Decompress(image)) {
        ErrorMessage("Image decompression failed");
        std::exit(666);
    }
    gl::blendfunction(gl::BF_SA, gl::BF_MSA);
    gl::lrectwrite(x, y, x + image.Width - 1, y + image.Height - 1, image.Pixels);
    gl::blendfunction(gl::BF_ONE, gl::BF_ZERO);
}
