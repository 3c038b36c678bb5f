#include "textures/texture_library.h"

#include "base/directories.h"
#include "base/memory.h"
#include "store/pools.h"
#include "store/texture_list.h"
#include "textures/pictures.h"

#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <unistd.h>

char TextureDir[MaxFileName];
char LastTextureDir[MaxFileName];
char LastTextureName[MaxFileName];
void (*TextureNotFoundSlot)(const char* path);

Texture* AddTexture(const char* path) {
    if (Texture* texture = TextureExists(path))
        return texture;
    if (!IsAnImageFile(path))
        return nullptr;
    Texture* texture = NewTexture();
    texture->FileName = CopyOfString(path);
    RememberTextureLocation(path);
    AddTextureToList(texture);
    return texture;
}

void RememberTextureLocation(const char* path) {
    char *directory, *name;
    SplitFileName(path, directory, name);
    if (std::string_view(directory).size() < MaxFileName && std::string_view(name).size() < MaxFileName) {
        CopyFileName(LastTextureDir, directory);
        CopyFileName(LastTextureName, name);
    }
}

int FindTextureFile(const char* path, char (&found)[MaxFileName]) {
    char *directory, *name;
    SplitFileName(path, directory, name);
    const std::string base = name;
    std::string_view relative = path;
    while (relative.starts_with("./"))
        relative.remove_prefix(2);
    const std::string asNamed(relative);
    const std::string modelDirectory = std::string(FilePath) + "/";
    const std::string textureDirectory = std::string(TextureDir) + "/";

    const std::string candidates[] = {modelDirectory + "textures/" + base,
                                      "./textures/" + base,
                                      base,
                                      textureDirectory + base,
                                      modelDirectory + base,
                                      asNamed,
                                      textureDirectory + asNamed};
    const std::size_t different = asNamed == base ? std::size(candidates) - 2 : std::size(candidates);
    for (std::size_t i = 0; i < different; ++i)
        if (candidates[i].size() < MaxFileName && access(candidates[i].c_str(), F_OK) == 0 &&
            IsAnImageFile(candidates[i].c_str())) {
            std::printf("Texture: %s\n", base.c_str());
            return CopyFileName(found, candidates[i].c_str());
        }
    std::fprintf(stderr, "Warning: texture %s not found\n", base.c_str());
    if (TextureNotFoundSlot)
        TextureNotFoundSlot(path);
    return 0;
}
