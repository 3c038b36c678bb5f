#include "textures/image_file.h"

#include "base/memory.h"
#include "base/regular_file.h"
#include "textures/picture_problems.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr std::uint16_t ImageMagic = 474;
constexpr std::size_t FixedHeader = 152; // as much of the header as every reader of the format has demanded
constexpr std::uint64_t HeaderSize = 512;

// The most values that a byte of a file can stand for: a packet of two bytes gives at most 127.
constexpr std::uint64_t MostValuesAByte = 64;

struct CloseAtEnd {
    void operator()(ImageFile* image) const { CloseImage(image); }
};

using OpenImage = std::unique_ptr<ImageFile, CloseAtEnd>;

bool IsRunLength(const ImageFile& image) {
    return image.Type >> 8 == ImageRunLength;
}

unsigned BytesPerValue(const ImageFile& image) {
    return image.Type & 0xff;
}

// Which byte of a two-byte value is its low one.
unsigned LowByte(const ImageFile& image) {
    return ImageIsLittleEndian(&image) ? 0 : 1;
}

// Rows and channels that have data of their own; the others repeat the first.
unsigned StoredRows(const ImageFile& image) {
    return image.Dimension < 2 ? 1 : image.YSize;
}

unsigned StoredChannels(const ImageFile& image) {
    return image.Dimension < 3 ? 1 : image.ZSize;
}

template <class Number>
void SwapBytes(Number& number) {
    auto* bytes = reinterpret_cast<std::uint8_t*>(&number);
    std::reverse(bytes, bytes + sizeof number);
}

template <class Number>
void TakeNumber(const std::uint8_t*& place, Number& number) {
    std::memcpy(&number, place, sizeof number);
    place += sizeof number;
}

void TakeHeader(const std::uint8_t* place, ImageFile& image) {
    std::uint16_t* const shorts[] = {&image.Magic, &image.Type,  &image.Dimension,
                                     &image.XSize, &image.YSize, &image.ZSize};
    for (std::uint16_t* number : shorts)
        TakeNumber(place, *number);
    for (std::uint32_t* number : {&image.Min, &image.Max, &image.WasteBytes})
        TakeNumber(place, *number);
    TakeNumber(place, image.Name);
    TakeNumber(place, image.ColourMap);

    image.Swap = image.Magic == ((ImageMagic & 0xff) << 8 | ImageMagic >> 8);
    if (!image.Swap)
        return;
    for (std::uint16_t* number : shorts)
        SwapBytes(*number);
    for (std::uint32_t* number : {&image.Min, &image.Max, &image.WasteBytes, &image.ColourMap})
        SwapBytes(*number);
}

bool ReadBytes(ImageFile& image, void* destination, std::size_t count) {
    if (std::fread(destination, 1, count, image.File) != count) {
        image.Offset = ImageFile::UnknownOffset;
        return false;
    }
    image.Offset += count;
    return true;
}

bool SeekTo(ImageFile& image, std::uint64_t target) {
    if (image.Offset == target)
        return true;
    image.Offset = ImageFile::UnknownOffset;
    if (fseeko(image.File, static_cast<off_t>(target), SEEK_SET) != 0)
        return false;
    image.Offset = target;
    return true;
}

bool ReadTable(ImageFile& image, std::uint32_t*& table) {
    const std::size_t count = std::size_t{image.YSize} * image.ZSize;
    table = static_cast<std::uint32_t*>(Allocate(count * sizeof *table));
    if (!table || !ReadBytes(image, table, count * sizeof *table))
        return false;
    if (image.Swap)
        std::for_each(table, table + count, SwapBytes<std::uint32_t>);
    return true;
}

bool ReadTables(ImageFile& image) {
    const std::uint64_t count = std::uint64_t{image.YSize} * image.ZSize;
    return HeaderSize + count * 2 * sizeof(std::uint32_t) <= image.Size && SeekTo(image, HeaderSize) &&
           ReadTable(image, image.RowStart) && ReadTable(image, image.RowSize);
}

bool ReserveBuffer(ImageFile& image, std::size_t size) {
    if (size <= image.BufferSize)
        return true;
    void* larger = Reallocate(image.Buffer, size);
    if (!larger)
        return false;
    image.Buffer = static_cast<std::uint8_t*>(larger);
    image.BufferSize = size;
    return true;
}

struct RowPlace {
    std::uint64_t Start;
    std::uint64_t Size; // bytes
};

bool LiesInFile(const ImageFile& image, RowPlace row) {
    return row.Start <= image.Size && row.Size <= image.Size - row.Start;
}

// Where the file holds a stored row. The storage and the dimension have been checked.
RowPlace PlaceOfRow(const ImageFile& image, unsigned y, unsigned z) {
    if (IsRunLength(image)) {
        const std::size_t entry = y + std::size_t{z} * image.YSize;
        return {image.RowStart[entry], image.RowSize[entry]};
    }
    const std::uint64_t size = std::uint64_t{image.XSize} * BytesPerValue(image);
    return {HeaderSize + (y + std::uint64_t{z} * image.YSize) * size, size};
}

bool IsReadable(const ImageFile& image) {
    return image.Type >> 8 <= ImageRunLength && (BytesPerValue(image) == 1 || BytesPerValue(image) == 2) &&
           image.Dimension >= 1 && image.Dimension <= 3;
}

// Expands one encoded row to exactly `count` bytes. `low` is the place of the byte that counts in each value.
template <unsigned Width>
bool ExpandRow(const std::uint8_t* data, std::size_t size, unsigned low, std::uint8_t* out, std::size_t count) {
    const std::uint8_t* const end = data + size / Width * Width;
    while (count > 0) {
        if (data == end)
            return false;
        const std::size_t length = data[low] & 0x7f;
        const bool literal = data[low] & 0x80;
        data += Width;
        const std::size_t stored = (literal ? length : 1) * Width;
        if (length > count || stored > static_cast<std::size_t>(end - data))
            return false;
        if (!literal)
            std::memset(out, data[low], length);
        else if constexpr (Width == 1)
            std::memcpy(out, data, length);
        else
            for (std::size_t i = 0; i < length; ++i)
                out[i] = data[i * Width + low];
        data += stored;
        out += length;
        count -= length;
    }
    return true;
}

bool ReadRowAt(ImageFile& image, RowPlace row, std::uint8_t* destination) {
    const bool direct = !IsRunLength(image) && BytesPerValue(image) == 1;
    if (!LiesInFile(image, row) || (!direct && !ReserveBuffer(image, row.Size)) || !SeekTo(image, row.Start) ||
        !ReadBytes(image, direct ? destination : image.Buffer, row.Size))
        return false;
    if (direct)
        return true;
    const unsigned low = LowByte(image);
    if (IsRunLength(image))
        return BytesPerValue(image) == 1 ? ExpandRow<1>(image.Buffer, row.Size, 0, destination, image.XSize)
                                         : ExpandRow<2>(image.Buffer, row.Size, low, destination, image.XSize);
    for (unsigned x = 0; x < image.XSize; ++x)
        destination[x] = image.Buffer[2 * x + low];
    return true;
}

struct StoredRow {
    RowPlace Place;
    unsigned Y, Z;
};

// Every stored row in the order of the file; none when one lies outside the file, or on another.
std::vector<StoredRow> RowsInFileOrder(const ImageFile& image) {
    std::vector<StoredRow> rows;
    rows.reserve(std::size_t{StoredRows(image)} * StoredChannels(image));
    for (unsigned z = 0; z < StoredChannels(image); ++z)
        for (unsigned y = 0; y < StoredRows(image); ++y) {
            const RowPlace place = PlaceOfRow(image, y, z);
            if (!LiesInFile(image, place))
                return {};
            rows.push_back({place, y, z});
        }
    const auto before = [](const StoredRow& a, const StoredRow& b) { return a.Place.Start < b.Place.Start; };
    if (!std::is_sorted(rows.begin(), rows.end(), before))
        std::sort(rows.begin(), rows.end(), before);
    const auto overlap = [](const StoredRow& a, const StoredRow& b) {
        return a.Place.Start + a.Place.Size > b.Place.Start;
    };
    if (std::adjacent_find(rows.begin(), rows.end(), overlap) != rows.end())
        return {};
    return rows;
}

// Puts the values of one channel into a row of the block.
void PutChannel(PixelBlock& block, const std::uint8_t* values, unsigned y, unsigned z) {
    const auto step = static_cast<std::size_t>(block.Channels);
    std::uint8_t* out = block.Row(static_cast<int>(y)) + (step - 1 - z);
    for (int x = 0; x < block.Width; ++x, out += step)
        *out = values[x];
}

// Puts a row where it belongs, and where rows and channels without data of their own repeat it.
void PutStoredRow(const ImageFile& image, PixelBlock& block, const std::uint8_t* values, const StoredRow& row) {
    const unsigned lastY = image.Dimension < 2 ? image.YSize : row.Y + 1;
    const unsigned lastZ = image.Dimension < 3 ? image.ZSize : row.Z + 1;
    for (unsigned y = row.Y; y < lastY; ++y)
        for (unsigned z = row.Z; z < lastZ; ++z)
            PutChannel(block, values, y, z);
}

} // namespace

ImageFile* OpenImageForRead(const char* name) {
    std::uint64_t size = 0;
    std::FILE* file = OpenRegularFile(name, size);
    if (!file)
        return nullptr;
    OpenImage image(static_cast<ImageFile*>(Allocate(sizeof(ImageFile))));
    if (!image) {
        std::fclose(file);
        return nullptr;
    }
    *image = ImageFile{};
    image->File = file;
    image->Size = size;

    std::uint8_t header[FixedHeader];
    if (!ReadBytes(*image, header, sizeof header))
        return nullptr;
    TakeHeader(header, *image);
    if (image->Magic != ImageMagic || image->XSize == 0 || image->YSize == 0 || image->ZSize == 0)
        return nullptr;
    if (IsRunLength(*image) && !ReadTables(*image))
        return nullptr;
    if (!ReserveBuffer(*image, (std::size_t{image->XSize} + image->XSize / 64) * 4) || !SeekTo(*image, HeaderSize))
        return nullptr;
    return image.release();
}

int ReadImageRow(ImageFile* image, std::uint8_t* destination, int y, int z) {
    if (image->Dimension < 3)
        z = 0;
    if (image->Dimension < 2)
        y = 0;
    if (y < 0 || y >= image->YSize || z < 0 || z >= image->ZSize || !IsReadable(*image))
        return -1;
    image->X = 0;
    image->Y = static_cast<std::uint16_t>(y);
    image->Z = static_cast<std::uint16_t>(z);
    return ReadRowAt(*image, PlaceOfRow(*image, y, z), destination) ? image->XSize : -1;
}

void CloseImage(ImageFile* image) {
    std::fclose(image->File);
    for (void* block :
         {static_cast<void*>(image->Buffer), static_cast<void*>(image->RowStart), static_cast<void*>(image->RowSize)})
        if (block)
            Free(block);
    Free(image);
}

bool ImageIsLittleEndian(const ImageFile* image) {
    return (std::endian::native == std::endian::little) != (image->Swap != 0);
}

std::string ReadImageFile(const char* name, PixelBlock& block) {
    const OpenImage image(OpenImageForRead(name));
    if (!image)
        return PictureIsDamaged;
    const std::uint64_t values = std::uint64_t{image->XSize} * image->YSize * image->ZSize;
    if (!IsReadable(*image))
        return PictureIsDamaged;
    if (values > image->Size * MostValuesAByte)
        return PictureEndsEarly;
    const std::vector<StoredRow> rows = RowsInFileOrder(*image);
    if (rows.empty())
        return PictureEndsEarly;
    PixelBlock made;
    if (!made.Make(image->XSize, image->YSize, image->ZSize))
        return TooLarge(image->XSize, image->YSize);

    std::vector<std::uint8_t> row8(image->XSize);
    for (const StoredRow& row : rows) {
        if (!ReadRowAt(*image, row.Place, row8.data()))
            return PictureIsDamaged;
        PutStoredRow(*image, made, row8.data(), row);
    }
    block = std::move(made);
    return "";
}
