// Any bytes as an image file: opening, whole reading and single rows stay inside their buffers, and agree.
#include "base/memory.h"
#include "textures/image_file.h"

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

// A file in memory, under a name by which it can be opened.
class MemoryFile {
  public:
    MemoryFile() : Descriptor(memfd_create("image", 0)), Name("/proc/self/fd/" + std::to_string(Descriptor)) {
        if (Descriptor < 0)
            std::abort();
    }

    const char* Fill(const unsigned char* data, std::size_t size) {
        if (ftruncate(Descriptor, 0) != 0 || pwrite(Descriptor, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
        return Name.c_str();
    }

  private:
    int Descriptor;
    std::string Name;
};

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
    int x, y, z;
    unsigned char* pixels = ReadImage(name, x, y, z);
    ImageFile* image = OpenImageForRead(name);
    Expect(image || !pixels);
    if (image) {
        CompareRows(image, pixels);
        CloseImage(image);
    }
    if (pixels)
        Free(pixels);
    return 0;
}
