#include "textures/png_picture.h"

#include "textures/orientation.h"
#include "textures/picture_problems.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <png.h>
#include <vector>

namespace {

constexpr std::size_t SignatureSize = 8, HeaderEnd = SignatureSize + 8 + 13;
/// Compressed data cannot stand for more than about this many times their size.
constexpr std::uint64_t MostExpansion = 1040;
/// Of chunks that are not pictures: texts and profiles, which may expand.
constexpr png_uint_32 MostChunkMemory = 1 << 20, MostChunks = 64;
constexpr png_uint_32 LongestEdge = 65535;

struct ByteSource {
    const std::uint8_t* Next;
    std::size_t Left;
    bool Ended;
};

void TakeBytes(png_structp png, png_bytep to, std::size_t count) {
    ByteSource& source = *static_cast<ByteSource*>(png_get_io_ptr(png));
    if (count > source.Left) {
        source.Ended = true;
        png_error(png, "the file ends early");
    }
    std::memcpy(to, source.Next, count);
    source.Next += count;
    source.Left -= count;
}

struct PngProblem {
    char Text[128];
};

void KeepProblem(png_structp png, png_const_charp message) {
    PngProblem& problem = *static_cast<PngProblem*>(png_get_error_ptr(png));
    std::strncpy(problem.Text, message, sizeof problem.Text - 1);
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

png_uint_32 BigEndian(const std::uint8_t* bytes) {
    return png_uint_32{bytes[0]} << 24 | png_uint_32{bytes[1]} << 16 | png_uint_32{bytes[2]} << 8 | bytes[3];
}

/// Has every picture come as 8 bits a value, in the order of a pixel block. Gives the number of its channels.
int ChooseForm(png_structp png, png_infop info) {
    png_set_scale_16(png);
    png_set_expand(png); // fewer bits, indices into a table of colours, a colour that stands for transparent
    png_set_bgr(png);
    png_set_swap_alpha(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    return png_get_channels(png, info);
}

/// All that the reading keeps, outside the function that is left by a jump.
struct PngReading {
    png_structp Png = nullptr;
    png_infop Info = nullptr;
    PngProblem Problem = {};
    ByteSource Source = {};
    std::vector<png_bytep> Rows;
    std::string Refusal;
    int Turn = OrientationUpright;

    PngReading(const std::uint8_t* bytes, std::size_t count) : Source{bytes, count, false} {
        Png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &Problem, KeepProblem, IgnoreWarning);
        Info = Png ? png_create_info_struct(Png) : nullptr;
    }

    ~PngReading() { png_destroy_read_struct(&Png, &Info, nullptr); }

    PngReading(const PngReading&) = delete;
    PngReading& operator=(const PngReading&) = delete;

    void TakeOrientation() {
        png_bytep exif = nullptr;
        png_uint_32 size = 0;
        if (png_get_eXIf_1(Png, Info, &size, &exif))
            Turn = OrientationIn(exif, size);
    }

    // Its texts must not come to live in the function that libpng jumps back to.
    [[gnu::noinline]] bool MakeRows(PixelBlock& block, int channels) {
        const auto width = static_cast<int>(png_get_image_width(Png, Info));
        const auto height = static_cast<int>(png_get_image_height(Png, Info));
        if (!block.Make(width, height, channels) || png_get_rowbytes(Png, Info) > block.Pitch) {
            Refusal = TooLarge(width, height);
            return false;
        }
        for (int y = height - 1; y >= 0; --y)
            Rows.push_back(block.Row(y));
        return true;
    }
};

/// False when libpng gave up; no object lives in here, so that nothing is left undone by its jump.
bool ReadPixels(PngReading& reading, PixelBlock& block) {
    if (setjmp(png_jmpbuf(reading.Png)))
        return false;
    png_set_read_fn(reading.Png, &reading.Source, TakeBytes);
    png_set_user_limits(reading.Png, LongestEdge, LongestEdge);
    png_set_chunk_malloc_max(reading.Png, MostChunkMemory);
    png_set_chunk_cache_max(reading.Png, MostChunks);
    png_read_info(reading.Png, reading.Info);
    if (!reading.MakeRows(block, ChooseForm(reading.Png, reading.Info)))
        return false;
    png_read_image(reading.Png, reading.Rows.data());
    png_read_end(reading.Png, reading.Info);
    reading.TakeOrientation();
    return true;
}

/// Whether the file has a picture of several that follow each other.
bool IsAnimated(const std::uint8_t* bytes, std::size_t count) {
    for (std::size_t place = SignatureSize; place + 8 <= count;) {
        if (std::memcmp(bytes + place + 4, "acTL", 4) == 0)
            return true;
        if (std::memcmp(bytes + place + 4, "IDAT", 4) == 0)
            return false;
        const std::uint64_t next = place + std::uint64_t{12} + BigEndian(bytes + place);
        if (next > count)
            return false;
        place = static_cast<std::size_t>(next);
    }
    return false;
}

} // namespace

bool ReadPngSize(const std::uint8_t* bytes, std::size_t count, PictureSize& size) {
    if (count < HeaderEnd || png_sig_cmp(bytes, 0, SignatureSize) != 0 || std::memcmp(bytes + 12, "IHDR", 4) != 0)
        return false;
    const std::uint8_t kind = bytes[HeaderEnd - 4];
    const png_uint_32 width = BigEndian(bytes + 16), height = BigEndian(bytes + 20);
    if (width > INT32_MAX || height > INT32_MAX)
        return false;
    size = {static_cast<int>(width), static_cast<int>(height),
            (kind & PNG_COLOR_MASK_COLOR ? 3 : 1) + (kind & PNG_COLOR_MASK_ALPHA ? 1 : 0)};
    return true;
}

std::string DecodePng(const std::uint8_t* bytes, std::size_t count, PixelBlock& block) {
    PictureSize size;
    if (!ReadPngSize(bytes, count, size))
        return PictureIsDamaged;
    if (size.Width == 0 || size.Height == 0)
        return PictureHasNoPixels;
    // A pixel has one bit at least.
    const std::uint64_t rowBytes = (std::uint64_t(size.Width) + 7) / 8;
    if (size.Width > int(LongestEdge) || size.Height > int(LongestEdge) ||
        std::uint64_t(size.Width) * std::uint64_t(size.Height) * std::uint64_t(size.Channels) > PixelBlock::MostBytes)
        return TooLarge(size.Width, size.Height);
    if (rowBytes * std::uint64_t(size.Height) > count * MostExpansion)
        return PictureEndsEarly;
    if (IsAnimated(bytes, count))
        return PictureIsAnimated;
    PngReading reading(bytes, count);
    if (!reading.Info)
        return PictureIsDamaged;
    PixelBlock made;
    if (!ReadPixels(reading, made) || !TurnUpright(made, reading.Turn)) {
        if (!reading.Refusal.empty())
            return reading.Refusal;
        return reading.Source.Ended ? PictureEndsEarly : PictureIsDamaged;
    }
    block = std::move(made);
    return "";
}
