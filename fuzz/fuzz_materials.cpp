// Any bytes as a palette of materials: what is read is finite and, written and read again, the same to what a file
// keeps; so a second round gives the same file.
#include "memory_file.h"

#include "materials/materials_file.h"
#include "store/accessors.h"
#include "store/material_list.h"
#include "store/storage.h"

#include <fstream>
#include <sstream>

namespace {

std::string Round(const char* name, const std::string& output) {
    ResetStorage();
    ReadMaterialsFile(name);
    MergeLoadedMaterials();
    if (!WriteMaterialsFile(output.c_str()))
        std::abort();
    std::ostringstream text;
    text << std::ifstream(output).rdbuf();
    return text.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const bool ready = (InitialiseStorage(), true);
    static MemoryFile file;
    static const std::string output = "/tmp/fuzz_materials." + std::to_string(getpid());
    if (!ready)
        return 0;
    const std::string first = Round(file.Fill(data, size), output);
    // Entries that became the same are merged in the second round.
    const std::string second = Round(file.Fill(first.data(), first.size()), output);
    if (second != Round(file.Fill(second.data(), second.size()), output))
        std::abort();
    unlink(output.c_str());
    return 0;
}
