#pragma once

#include "textures/pixel_block.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

// Reading of the image files that serve as textures: magic number 474, a header of 512 bytes, then the values channel
// by channel and row by row from the bottom, verbatim or run-length encoded, of one or two bytes each, in either byte
// order. Nothing here writes to a terminal or a window: every failure is a null or -1, and leaves nothing open or
// allocated.

/// What the high byte of ImageFile::Type may be.
enum ImageStorage : std::uint8_t { ImageVerbatim = 0, ImageRunLength = 1 };

/// An open image, the caller's until CloseImage.
struct ImageFile {
    std::uint16_t Magic;
    std::uint16_t Type; // high byte an ImageStorage, low byte the bytes of a value, 1 or 2; the reader of rows checks
    std::uint16_t Dimension;           // 1: one row of one channel; 2: one channel; 3: several channels
    std::uint16_t XSize, YSize, ZSize; // pixels a row, rows, channels; never 0
    std::uint32_t Min, Max;            // of the values, as the file says
    std::uint32_t WasteBytes;
    char Name[80]; // as in the file, perhaps without a closing null
    std::uint32_t ColourMap;

    std::FILE* File;
    std::uint64_t Size;      // bytes in the file
    std::uint64_t Offset;    // current place in the file, UnknownOffset after a failure
    std::int16_t Swap;       // flag: the file's byte order is not this machine's
    std::uint16_t X, Y, Z;   // place of the last seek
    std::uint8_t* Buffer;    // one row as the file holds it
    std::size_t BufferSize;  // grows when an encoded row is longer than any sensible one
    std::uint32_t* RowStart; // of YSize * ZSize rows, run-length images only: place in the file
    std::uint32_t* RowSize;  // and length there, bytes

    static constexpr std::uint64_t UnknownOffset = ~std::uint64_t{0};
};

/// Opens an image and reads its header and row tables. Null when the file is none, or has a size of 0. Whether storage,
/// value width and rows make sense shows when rows are read.
ImageFile* OpenImageForRead(const char* name);

/// Reads one channel `z` of one row `y`, row 0 being the bottom one, as XSize bytes: of two-byte values the low byte.
/// Gives XSize, or -1 when there is no such row, when it lies outside the file, or does not decode to XSize values.
int ReadImageRow(ImageFile* image, std::uint8_t* destination, int y, int z);

void CloseImage(ImageFile* image);

/// Whether the file has the low byte of a number first.
bool ImageIsLittleEndian(const ImageFile* image);

/// Reads a whole image. Nothing on success, otherwise why there is none, the block being as it was: a row lies outside
/// the file, on another one, or does not decode.
std::string ReadImageFile(const char* name, PixelBlock& block);
