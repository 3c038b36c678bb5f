// Any bytes as an image file: opening, whole reading and single rows stay inside their buffers, and agree.
#include "memory_file.h"

#include "textures/image_file.h"

#include <cstdlib>
#include <vector>

namespace {

void Expect(bool condition) {
    if (!condition)
        std::abort();
}

// The whole image is its rows; a row that fails, fails it.
void CompareRows(ImageFile* image, const unsigned char* pixels) {
    constexpr int MostRows = 8;
    const std::size_t pitch = (std::size_t{image->XSize} * image->ZSize + 3) / 4 * 4;
    std::vector<unsigned char> row(image->XSize);
    for (int i = 0; i < MostRows; ++i) {
        // From the end, so that the file is not read in its order.
        const int y = (image->YSize - 1) * (MostRows - 1 - i) / (MostRows - 1);
        const int z = (image->ZSize - 1) * (i % 3) / 2;
        const int count = ReadImageRow(image, row.data(), y, z);
        Expect(count == -1 || count == image->XSize);
        if (!pixels)
            continue;
        Expect(count == image->XSize);
        for (int x = 0; x < count; ++x)
            Expect(pixels[y * pitch + std::size_t(x) * image->ZSize + (image->ZSize - 1 - z)] == row[x]);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static MemoryFile file;
    const char* name = file.Fill(data, size);
    PixelBlock block;
    const bool whole = ReadImageFile(name, block).empty();
    ImageFile* image = OpenImageForRead(name);
    Expect(image || !whole);
    if (image) {
        CompareRows(image, block.Data());
        CloseImage(image);
    }
    return 0;
}
