// Model files of any version, from memory: whatever the bytes, reading ends, the store stays sound, and what could be
// read can be written and read again. Run with -close_fd_mask=3, since reading traces and warns.

#include "files/model_mutator.h"

#include "base/directories.h"
#include "files/file_information.h"
#include "files/reader.h"
#include "files/writer.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/scene_views.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A directory with an image "a.rgb" of one pixel, so that textures are found too; removed at the end.
struct ModelDirectory {
    ModelDirectory() {
        std::string pattern = std::filesystem::temp_directory_path() / "kirvo-fuzz-XXXXXX";
        if (!mkdtemp(pattern.data()))
            std::abort();
        Path = pattern;
        std::string image("\x01\xda\0\1\0\2\0\1\0\1\0\1", 12);
        image.resize(513);
        std::ofstream(Path / "a.rgb", std::ios::binary) << image;
        CopyFileName(FilePath, Path.c_str());
    }

    ~ModelDirectory() { std::filesystem::remove_all(Path); }

    std::filesystem::path Path;
};

void Expect(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace

extern "C" std::size_t LLVMFuzzerMutate(unsigned char* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t most, unsigned seed) {
    if (seed % 2)
        return LLVMFuzzerMutate(data, size, most);
    const std::string mutant = ModelMutator(seed).Mutate({reinterpret_cast<const char*>(data), size}, most);
    std::memcpy(data, mutant.data(), mutant.size());
    return mutant.size();
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ModelDirectory directory;
    static const int file = memfd_create("model", 0);
    static const std::string name = "/proc/self/fd/" + std::to_string(file);
    TheStorageSlots.ResetFileInformation = ResetFileInformation;
    // The low bit of the size decides whether this is the file that is edited or one to merge.
    PointToMerge(static_cast<int>(size & 1));

    if (ReadKirvoFromMemory(data, size)) {
        for (Object* object : EveryObject(*CurrentFile)) {
            CurrentObject() = object;
            CheckIntegrity();
            CleanUpObject();
            CheckIntegrity();
        }
        if (!Mergeing) {
            Expect(WriteKirvo(name.c_str()));
            Expect(ReadKirvo(name.c_str()));
        }
    }
    ResetStorage();
    Expect(!CurrentFile->FirstObject && !CurrentFile->FirstMaterial && !CurrentFile->Scene);
    return 0;
}
