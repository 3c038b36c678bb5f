// The whole import: a foreign file goes through the converter's process and arrives as a model, or as a reason. The
// first byte chooses the format.

#include "files/converter_processes.h"
#include "files/file_errors.h"
#include "files/file_information.h"
#include "files/reader.h"
#include "store/storage.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr const char* Formats[][2] = {{"obj", ".obj"}, {"ply", ".ply"}, {"stl", ".stl"},     {"gltf", ".gltf"},
                                      {"glb", ".glb"}, {"ac3d", ".ac"}, {"off", ".off"},     {"x", ".x"},
                                      {"dxf", ".dxf"}, {"3ds", ".3ds"}, {"collada", ".dae"}, {"lwo", ".lwo"},
                                      {"fbx", ".fbx"}};

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool ready = [] {
        setenv("KIRVO_CONVERTER_SECONDS", "5", 1);
        InitialiseStorage();
        TheStorageSlots.ResetFileInformation = ResetFileInformation;
        FileErrorOk = 1;
        return true;
    }();
    if (!ready || size == 0)
        return 0;
    const auto& [name, extension] = Formats[data[0] % std::size(Formats)];
    ConverterFolder folder;
    const std::string from = folder.Prefix() + extension, to = folder.NewImportFile();
    std::ofstream(from, std::ios::binary)
        .write(reinterpret_cast<const char*>(data) + 1, static_cast<std::streamsize>(size - 1));
    const ConverterEnd end =
        RunConverter({std::string(KIRVO_CONVERTERS) + "/to_Kirvo/" + name, {from, to}, "", 60}, folder, nullptr);
    if (end.NotStarted || end.TookTooLong)
        Fail("the converter did not come to an end by itself");
    const bool told = std::filesystem::exists(folder.ErrorFile());
    if ((end.Signal || end.Status) && !told)
        Fail("the converter failed without a reason");
    if (!told && !ReadKirvo(to.c_str()))
        Fail(std::string("the model cannot be read: ") + Ferr[FileErrorNumber]);
    ResetStorage();
    return 0;
}
