// Any bytes as a palette of textures, among whose images one exists: what is read is written as it was read.
#include "memory_file.h"

#include "store/accessors.h"
#include "store/storage.h"
#include "store/texture_list.h"
#include "textures/texture_file.h"

#include <string>

namespace {

// A grey image of one pixel. Wherever the input has an I at the beginning of a line's value, its name stands.
constexpr unsigned char Image[513] = {1, 218, 0, 1, 0, 2, 0, 1, 0, 1, 0, 1};

std::string WithNames(const unsigned char* data, std::size_t size, const std::string& name) {
    std::string text(reinterpret_cast<const char*>(data), size);
    for (std::size_t place = 0; (place = text.find(": I\n", place)) != std::string::npos; place += name.size())
        text.replace(place + 2, 1, name);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const bool ready = (InitialiseStorage(), true);
    static MemoryFile image, file;
    static const std::string output = "/tmp/fuzz_textures." + std::to_string(getpid());
    if (!ready)
        return 0;
    const std::string text = WithNames(data, size, image.Fill(Image, sizeof Image));
    ResetStorage();
    ReadTexturesFile(file.Fill(text.data(), text.size()));
    MergeLoadedTextures();
    if (!WriteTexturesFile(output.c_str()))
        std::abort();
    ReadTexturesFile(output.c_str());
    Texture* read = LoadedTextures;
    for (const Texture* texture = FirstTexture(); texture; texture = texture->Next, read = read->Next)
        if (!read || !TexturesAreTheSame(texture, read))
            std::abort();
    FreeLoadedTextures();
    unlink(output.c_str());
    return 0;
}
