// Any text as the body of a model of version 1.00: what is accepted is a sound model, which can be written and is read
// again; what is not leaves an empty store.
#include "base/directories.h"
#include "files/file_errors.h"
#include "files/reader.h"
#include "files/writer.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

void Expect(bool condition) {
    if (!condition)
        std::abort();
}

// Where models are written to.
const char* MemoryFileName() {
    static const std::string name = "/proc/self/fd/" + std::to_string(memfd_create("model", 0));
    return name.c_str();
}

int Start() {
    CopyFileName(FileName, "model.kirvo");
    InitialiseStorage();
    return 1;
}

void CheckModel() {
    CheckIntegrity();
    for (const Polygon* polygon : EveryPolygon(CurrentObject()))
        Expect(polygon->Material);
    CleanUpObject();
    CheckIntegrity();
    Expect(WriteKirvo(MemoryFileName()));
    Expect(ReadKirvo(MemoryFileName()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const int started = Start();
    std::string file = "Compatibility: 1.00\n";
    file.append(reinterpret_cast<const char*>(data), size);
    if (ReadKirvoFromMemory(file.data(), file.size()))
        CheckModel();
    else
        Expect(!MainFile.FirstObject && !MainFile.FirstMaterial && !MainFile.FirstTexture);
    ResetStorage();
    return started - 1;
}
