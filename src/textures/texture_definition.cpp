#include "textures/texture_definition.h"

#include "base/debug.h"
#include "base/slots.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/filters.h"
#include "textures/picture_problems.h"
#include "textures/pictures.h"

#include <array>
#include <bit>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <sys/stat.h>
#include <tuple>
#include <vector>

TextureDefinitionSlots TheTextureDefinitionSlots;

namespace {

// Property tokens of the graphics layer, and values that are no filters.
enum TextureProperty {
    PropertyEnd = 0,
    PropertyMinFilter = 256,
    PropertyMagFilter = 512,
    PropertyWrapS = 784,
    PropertyWrapT = 800,
    PropertyInternalFormat = 1536,
    WrapClamp = 770,
    ReducedFormat3 = 1584,
    ReducedFormat4 = 1600
};

constexpr int MostChannels = 4;

// All that makes a definition differ from another. Filters by their bits: a file may hold one that is no number, which
// would not be equal to itself.
using DefinitionKey = std::tuple<std::string, std::uint32_t, std::uint32_t, bool, bool, bool>;

/// What tells that a file is another one than before: its size and the time of its last change. Zeros when there is no
/// file.
struct FileStamp {
    std::int64_t Seconds = 0, Nanoseconds = 0, Size = 0;

    bool operator==(const FileStamp&) const = default;
};

FileStamp StampOf(const char* name) {
    struct stat status;
    if (stat(name, &status) != 0)
        return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size};
}

struct BoundTexture {
    int GLId;
    int Width, Height, Components;
    float Aspect;
    FileStamp Stamp;
};

std::map<DefinitionKey, BoundTexture> BoundTextures;
/// The definitions that stand for missing images, by their properties.
std::map<std::vector<float>, int> Placeholders;

DefinitionKey KeyOf(const Texture* texture) {
    return {texture->FileName,
            std::bit_cast<std::uint32_t>(texture->MinFilter),
            std::bit_cast<std::uint32_t>(texture->MagFilter),
            texture->Fast != 0,
            texture->ClampS != 0,
            texture->ClampT != 0};
}

std::vector<float> PropertiesOf(const Texture* texture) {
    const bool highEnd = TheTextureDefinitionSlots.IsHighEnd && TheTextureDefinitionSlots.IsHighEnd();
    std::vector<float> list;
    const auto add = [&](int property, float value) { list.insert(list.end(), {static_cast<float>(property), value}); };
    const auto addFilter = [&](int property, float filter, float onlyHighEnd) {
        if (filter != FilterDefault && (highEnd || (filter != FilterBicubic && filter != onlyHighEnd)))
            add(property, filter);
    };
    addFilter(PropertyMinFilter, texture->MinFilter, FilterMipmapTrilinear);
    addFilter(PropertyMagFilter, texture->MagFilter, FilterSharpen);
    if (texture->Fast && highEnd && texture->Components >= 3)
        add(PropertyInternalFormat, texture->Components == 3 ? ReducedFormat3 : ReducedFormat4);
    if (texture->ClampS)
        add(PropertyWrapS, WrapClamp);
    if (texture->ClampT)
        add(PropertyWrapT, WrapClamp);
    list.push_back(PropertyEnd);
    return list;
}

void HandOver(Texture* texture, const void* pixels) {
    const std::vector<float> properties = PropertiesOf(texture);
    texture->GLId = NextFreeTexture++;
    TheTextureDefinitionSlots.DefineImage(texture->GLId, texture->Components, texture->Width, texture->Height, pixels,
                                          static_cast<int>(properties.size()), properties.data());
}

// Something that shows on any surface that an image is missing.
void DefinePlaceholder(Texture* texture) {
    constexpr int Edge = 16, Square = 4;
    constexpr std::uint8_t Dark = 96, Light = 160;
    std::array<std::uint8_t, Edge * Edge> pixels;
    for (int y = 0; y < Edge; ++y)
        for (int x = 0; x < Edge; ++x)
            pixels[y * Edge + x] = (x / Square + y / Square) % 2 ? Light : Dark;
    texture->Aspect = 1.0f;
    texture->Width = texture->Height = Edge;
    texture->Components = 1;
    // One definition for all that look the same.
    const auto [same, isNew] = Placeholders.try_emplace(PropertiesOf(texture), 0);
    if (isNew)
        HandOver(texture, pixels.data());
    else
        texture->GLId = same->second;
    same->second = texture->GLId;
}

void TakeDefinition(Texture* texture, const BoundTexture& definition) {
    texture->GLId = definition.GLId;
    texture->Width = definition.Width;
    texture->Height = definition.Height;
    texture->Components = definition.Components;
    texture->Aspect = definition.Aspect;
    Trace("Reused texture %d\n", texture->GLId);
}

/// The definition that the texture can have without its file being read, or null.
const BoundTexture* FindDefinition(const Texture* texture) {
    const auto bound = BoundTextures.find(KeyOf(texture));
    if (bound == BoundTextures.end())
        return nullptr;
    const FileStamp stamp = StampOf(texture->FileName);
    return stamp == FileStamp() || stamp == bound->second.Stamp ? &bound->second : nullptr;
}

/// A definition of the same image with whatever settings, or null.
const BoundTexture* FindFormerPicture(const Texture* texture) {
    const auto bound = BoundTextures.lower_bound({texture->FileName, 0, 0, false, false, false});
    return bound != BoundTextures.end() && std::get<0>(bound->first) == texture->FileName ? &bound->second : nullptr;
}

void DefineFrom(Texture* texture, const PixelBlock& block, std::string problem) {
    Trace("Defining texture:%d\n", NextFreeTexture);
    if (block.Channels > MostChannels)
        problem = PictureHasManyChannels;
    if (!problem.empty()) {
        if (StampOf(texture->FileName) != FileStamp())
            std::fprintf(stderr, "Warning: texture %s: %s\n", texture->FileName, problem.c_str());
        if (const BoundTexture* former = FindFormerPicture(texture))
            TakeDefinition(texture, *former);
        else
            DefinePlaceholder(texture);
        return;
    }
    texture->Aspect = static_cast<float>(block.Width) / static_cast<float>(block.Height);
    texture->Width = block.Width;
    texture->Height = block.Height;
    texture->Components = block.Channels;
    HandOver(texture, block.Data());
    BoundTextures[KeyOf(texture)] = {texture->GLId,  block.Width,     block.Height,
                                     block.Channels, texture->Aspect, StampOf(texture->FileName)};
}

/// Defines a texture anew if its settings or its file have changed. True when it has got another definition, which kept
/// drawings know nothing of.
bool Redefine(Texture* texture) {
    if (!TheTextureDefinitionSlots.DefineImage)
        return false;
    const int oldId = texture->GLId;
    if (const BoundTexture* definition = FindDefinition(texture)) {
        TakeDefinition(texture, *definition);
    } else {
        PixelBlock block;
        const std::string problem = ReadPicture(texture->FileName, block);
        DefineFrom(texture, block, problem);
    }
    return texture->GLId != oldId;
}

/// The textures whose images must be read, one for each definition.
std::vector<Texture*> TexturesToRead() {
    std::vector<Texture*> wanted;
    std::set<DefinitionKey> keys;
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        if (!FindDefinition(texture) && keys.insert(KeyOf(texture)).second)
            wanted.push_back(texture);
    return wanted;
}

bool ReadAndDefine(const std::vector<Texture*>& textures) {
    std::vector<std::string> names;
    for (const Texture* texture : textures)
        names.emplace_back(texture->FileName);
    bool changed = false;
    ReadPictures(names, [&](std::size_t index, PixelBlock& block, const std::string& problem) {
        const int oldId = textures[index]->GLId;
        DefineFrom(textures[index], block, problem);
        changed |= textures[index]->GLId != oldId;
        CallSlot(TheTextureDefinitionSlots.ReadingProgress, static_cast<int>(index) + 1,
                 static_cast<int>(textures.size()));
    });
    return changed;
}

} // namespace

void DefineTexture(Texture* texture) {
    if (Redefine(texture))
        EveryAppearanceChanged();
}

void DefineAllTextures() {
    bool changed = false;
    if (TheTextureDefinitionSlots.DefineImage) {
        const std::vector<Texture*> unread = TexturesToRead();
        const std::set<Texture*> read(unread.begin(), unread.end());
        changed = !unread.empty() && ReadAndDefine(unread);
        for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
            if (!read.contains(texture))
                changed |= Redefine(texture);
    }
    if (changed)
        EveryAppearanceChanged();
    CallSlot(TheTextureDefinitionSlots.DirtyTextureGizmo);
}

void FreeBoundTextures() {
    BoundTextures.clear();
    Placeholders.clear();
}
