#include "textures/texture_file.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "base/palette_file.h"
#include "base/text_lines.h"
#include "gooey/file_selector.h"
#include "gooey/messages.h"
#include "gooey/palette_selection.h"
#include "store/accessors.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "textures/filters.h"
#include "textures/pictures.h"
#include "textures/texture_changes.h"
#include "textures/texture_definition.h"
#include "textures/texture_library.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <string>

int LoadTexturesOnNew = 0;
Texture* LoadedTextures;

namespace {

using TextureList = LinkedList<&Texture::Next, &Texture::Prev>;

constexpr char Header[] = "Kirvo textures version ";
constexpr char NameKey[] = "Texture: ";

struct FilterLine {
    const char* Key;
    float Texture::*Filter;
};

constexpr FilterLine FilterLines[] = {{"Minfilter: ", &Texture::MinFilter}, {"Magfilter: ", &Texture::MagFilter}};

struct FlagLine {
    const char* Key;
    std::int32_t Texture::*Flag;
};

constexpr FlagLine FlagLines[] = {
    {"Fast: ", &Texture::Fast}, {"Clamp X: ", &Texture::ClampS}, {"Clamp Y: ", &Texture::ClampT}};

int ReadFilter(std::FILE* file, const char* key, float& filter) {
    std::array<const char*, std::size(TextureFilters)> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = TextureFilters[i].Name;
    const int index = ReadAsciiToken(file, key, names.data(), static_cast<int>(names.size()));
    if (index < 0)
        return 0;
    filter = TextureFilters[index].Token;
    return 1;
}

int ReadFlag(std::FILE* file, const char* key, std::int32_t& flag) {
    const char* value = MatchAsciiLine(file, key);
    if (!value)
        return 0;
    flag = *value == 't' || *value == 'T';
    return 1;
}

/// 0 when a line is not the one that must come.
int ReadSettings(std::FILE* file, Texture* texture) {
    for (const FilterLine& line : FilterLines)
        if (!ReadFilter(file, line.Key, texture->*line.Filter))
            return 0;
    for (const FlagLine& line : FlagLines)
        if (!ReadFlag(file, line.Key, texture->*line.Flag))
            return 0;
    return 1;
}

void ReadEntries(std::FILE* file) {
    Texture* last = nullptr;
    for (bool found = FindLineInFile(file, NameKey); found;) {
        if (!IsAnImageFile(RestOfLine)) {
            found = FindLineInFile(file, NameKey);
            continue;
        }
        Texture* texture = NewTexture();
        texture->FileName = CopyOfString(RestOfLine);
        RememberTextureLocation(texture->FileName);
        TextureList::Append(LoadedTextures, last, texture);
        found = ReadSettings(file, texture) ? FindLineInFile(file, NameKey) : FindNextEntry(file, NameKey);
    }
}

void WriteTexture(std::FILE* file, const Texture* texture) {
    std::fprintf(file, "%s%s\n", NameKey, OnOneLine(NameKey, texture->FileName).c_str());
    for (const FilterLine& line : FilterLines)
        std::fprintf(file, "%s%s\n", line.Key, FilterName(texture->*line.Filter));
    for (const FlagLine& line : FlagLines)
        std::fprintf(file, "%s%s\n", line.Key, texture->*line.Flag ? "TRUE" : "FALSE");
    std::fputs("\n\n", file);
}

void MergeChosenTextures() {
    const Texture* before = CurrentTexture();
    MergeLoadedTextures();
    if (CurrentTexture() != before)
        TextureAppChange();
}

constexpr PaletteFiles TextureFiles = {TexturesExtension,
                                       ReadTexturesFile,
                                       MergeChosenTextures,
                                       WriteTexturesFile,
                                       "There are no textures in this file,\nor their images are missing:",
                                       "Couldn't write texture file"};

} // namespace

int ReadTexturesFile(const char* name) {
    Trace("Reading palette: %s\n", name);
    FreeLoadedTextures();
    std::FILE* file = std::fopen(name, "r");
    if (!file)
        return 0;
    if (FindLineInFile(file, Header))
        ReadEntries(file);
    std::fclose(file);
    return LoadedTextures != nullptr;
}

int WriteTexturesFile(const char* name) {
    Trace("Writing textures as: %s\n", name);
    return WritePaletteFile(name, "texture", Header, [](std::FILE* file) {
        for (const Texture* texture : Along<&Texture::Next>(FirstTexture()))
            WriteTexture(file, texture);
    });
}

void FreeLoadedTextures() {
    for (Texture* texture : Along<&Texture::Next>(LoadedTextures))
        FreeTexture(texture);
    LoadedTextures = nullptr;
}

void MergeLoadedTextures() {
    for (Texture* texture : Along<&Texture::Next>(LoadedTextures))
        if (FindTexture(texture))
            FreeTexture(texture);
        else
            AddTextureToList(texture);
    LoadedTextures = nullptr;
    DefineAllTextures();
}

const char* DefaultTexturesFile() {
    static std::string name;
    name = std::string(HomeDir) + "/default" + TexturesExtension;
    return name.c_str();
}

int SaveDefaultTextures() {
    const int written = WriteTexturesFile(DefaultTexturesFile());
    if (!written)
        TellUserS((std::string(TextureFiles.CannotWrite) + "\n\n" + std::strerror(errno)).c_str());
    return written;
}

void LoadDefaultTextures() {
    if (!LoadTexturesOnNew || StartingUp || !ReadTexturesFile(DefaultTexturesFile()))
        return;
    // What every model starts with is no work to be saved.
    const int workSaved = WorkSaved;
    MergeLoadedTextures();
    CurrentTexture() = FirstTexture();
    WorkSaved = workSaved;
}

void LoadTexturePalette() {
    DoFileSelector(
        FileToOpen, FilePath, nullptr, TexturesExtension,
        [](int, const char* directory, const char* name) { LoadPaletteFile(TextureFiles, directory, name); }, nullptr);
}

void SaveTexturePalette() {
    DoFileSelector(
        FileToSave, FilePath, nullptr, TexturesExtension,
        [](int, const char* directory, const char* name) { SavePaletteFile(TextureFiles, directory, name); }, nullptr);
}
