#include "textures/jpeg_picture.h"

#include "textures/orientation.h"
#include "textures/picture_problems.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <jpeglib.h>
// The codes of its warnings, after the library's own header.
#include <jerror.h>

namespace {

/// A file may ask for its picture to be refined this often; one that means well does in ten passes.
constexpr int MostScans = 200;
/// A bit of a file stands for a block of 8 by 8 values at least.
constexpr std::uint64_t MostValuesAByte = 8 * 64;
constexpr int ExifMarker = JPEG_APP0 + 1;
constexpr char ExifStart[] = "Exif\0";
constexpr std::size_t ExifStartSize = 6;

struct JpegReading {
    jpeg_decompress_struct Jpeg = {};
    jpeg_error_mgr Errors = {};
    jpeg_progress_mgr Progress = {};
    std::jmp_buf GiveUp = {};
    bool Ended = false;
    const char* Refusal = nullptr;
    bool IsTooLarge = false;
    int Turn = OrientationUpright;

    JpegReading() = default;

    ~JpegReading() { jpeg_destroy_decompress(&Jpeg); }

    JpegReading(const JpegReading&) = delete;
    JpegReading& operator=(const JpegReading&) = delete;
};

JpegReading& ReadingOf(j_common_ptr jpeg) {
    return *static_cast<JpegReading*>(jpeg->client_data);
}

void LeaveWithError(j_common_ptr jpeg) {
    JpegReading& reading = ReadingOf(jpeg);
    if (jpeg->err->msg_code == JERR_EMPTY_IMAGE)
        reading.Refusal = PictureHasNoPixels;
    std::longjmp(reading.GiveUp, 1);
}

/// What the library would make up pixels for is no picture; other oddities are let pass.
void JudgeWarning(j_common_ptr jpeg, int level) {
    if (level >= 0)
        return;
    JpegReading& reading = ReadingOf(jpeg);
    switch (jpeg->err->msg_code) {
    case JWRN_JPEG_EOF:
    case JWRN_HIT_MARKER:
        reading.Ended = true;
        [[fallthrough]];
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
    case JWRN_MUST_RESYNC:
        std::longjmp(reading.GiveUp, 1);
    default:
        break;
    }
}

void CountScans(j_common_ptr jpeg) {
    if (jpeg->is_decompressor && reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > MostScans)
        std::longjmp(ReadingOf(jpeg).GiveUp, 1);
}

void Begin(JpegReading& reading, const std::uint8_t* bytes, std::size_t count) {
    reading.Jpeg.err = jpeg_std_error(&reading.Errors);
    reading.Errors.error_exit = LeaveWithError;
    reading.Errors.emit_message = JudgeWarning;
    reading.Errors.output_message = [](j_common_ptr) {};
    reading.Jpeg.client_data = &reading;
    jpeg_create_decompress(&reading.Jpeg);
    reading.Progress.progress_monitor = CountScans;
    reading.Jpeg.progress = &reading.Progress;
    jpeg_mem_src(&reading.Jpeg, bytes, count);
    jpeg_save_markers(&reading.Jpeg, ExifMarker, 0xFFFF);
}

void TakeOrientation(JpegReading& reading) {
    for (jpeg_saved_marker_ptr marker = reading.Jpeg.marker_list; marker; marker = marker->next)
        if (marker->marker == ExifMarker && marker->data_length > ExifStartSize &&
            std::memcmp(marker->data, ExifStart, ExifStartSize) == 0) {
            reading.Turn = OrientationIn(marker->data + ExifStartSize, marker->data_length - ExifStartSize);
            return;
        }
}

/// Decides in which colours the picture comes; false for one that cannot be taken.
bool ChooseForm(JpegReading& reading, std::size_t count) {
    jpeg_decompress_struct& jpeg = reading.Jpeg;
    if (jpeg.num_components == 4 || jpeg.jpeg_color_space == JCS_CMYK || jpeg.jpeg_color_space == JCS_YCCK) {
        reading.Refusal = PictureIsCmyk;
        return false;
    }
    jpeg.out_color_space = jpeg.num_components == 1 ? JCS_GRAYSCALE : JCS_EXT_BGR;
    jpeg.dct_method = JDCT_ISLOW;
    const std::uint64_t pixels = std::uint64_t{jpeg.image_width} * jpeg.image_height;
    if (pixels * (jpeg.num_components == 1 ? 1 : 3) > PixelBlock::MostBytes) {
        reading.IsTooLarge = true;
        return false;
    }
    if (pixels > count * MostValuesAByte) {
        reading.Refusal = PictureEndsEarly;
        return false;
    }
    return true;
}

/// False when the library gave up; no object lives in here, so that nothing is left undone by its jump.
bool ReadPixels(JpegReading& reading, const std::uint8_t* bytes, std::size_t count, PixelBlock& block) {
    if (setjmp(reading.GiveUp))
        return false;
    Begin(reading, bytes, count);
    jpeg_decompress_struct& jpeg = reading.Jpeg;
    jpeg_read_header(&jpeg, TRUE);
    if (!ChooseForm(reading, count))
        return false;
    TakeOrientation(reading);
    jpeg_start_decompress(&jpeg);
    if (!block.Make(static_cast<int>(jpeg.output_width), static_cast<int>(jpeg.output_height),
                    jpeg.output_components)) {
        reading.IsTooLarge = true;
        return false;
    }
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW row = block.Row(block.Height - 1 - static_cast<int>(jpeg.output_scanline));
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_decompress(&jpeg);
    return true;
}

/// Whether a marker begins a frame: its header has the size.
bool BeginsFrame(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

int BigEndian(const std::uint8_t* bytes) {
    return bytes[0] << 8 | bytes[1];
}

} // namespace

bool ReadJpegSize(const std::uint8_t* bytes, std::size_t count, PictureSize& size) {
    if (count < 4 || bytes[0] != 0xFF || bytes[1] != 0xD8)
        return false;
    std::size_t place = 2;
    while (place + 4 <= count && bytes[place] == 0xFF) {
        const std::uint8_t marker = bytes[place + 1];
        if (marker == 0xFF) {
            ++place;
            continue;
        }
        if (BeginsFrame(marker) && place + 10 <= count) {
            size = {BigEndian(bytes + place + 7), BigEndian(bytes + place + 5), bytes[place + 9]};
            return true;
        }
        place += 2 + static_cast<std::size_t>(BigEndian(bytes + place + 2));
    }
    return false;
}

std::string DecodeJpeg(const std::uint8_t* bytes, std::size_t count, PixelBlock& block) {
    JpegReading reading;
    PixelBlock made;
    if (!ReadPixels(reading, bytes, count, made) || !TurnUpright(made, reading.Turn)) {
        if (reading.IsTooLarge)
            return TooLarge(static_cast<long>(reading.Jpeg.image_width), static_cast<long>(reading.Jpeg.image_height));
        return reading.Refusal ? reading.Refusal : reading.Ended ? PictureEndsEarly : PictureIsDamaged;
    }
    block = std::move(made);
    return "";
}
