#include "textures/texture_definition.h"

#include "base/debug.h"
#include "base/memory.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/filters.h"
#include "textures/image_file.h"

#include <array>
#include <bit>
#include <map>
#include <string>
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

// All that makes a definition differ from another. Filters by their bits: a file may hold one that is no number, which
// would not be equal to itself.
using DefinitionKey = std::tuple<std::string, std::uint32_t, std::uint32_t, bool, bool, bool>;

struct BoundTexture {
    int GLId;
    int Width, Height, Components;
    float Aspect;
};

std::map<DefinitionKey, BoundTexture> BoundTextures;

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
    HandOver(texture, pixels.data());
}

void Define(Texture* texture) {
    const DefinitionKey key = KeyOf(texture);
    if (const auto bound = BoundTextures.find(key); bound != BoundTextures.end()) {
        const BoundTexture& definition = bound->second;
        texture->GLId = definition.GLId;
        texture->Width = definition.Width;
        texture->Height = definition.Height;
        texture->Components = definition.Components;
        texture->Aspect = definition.Aspect;
        Trace("Reused texture %d\n", texture->GLId);
        return;
    }
    Trace("Defining texture:%d\n", NextFreeTexture);
    int width, height, components;
    std::uint8_t* pixels = ReadImage(texture->FileName, width, height, components);
    constexpr int mostComponents = 4;
    if (!pixels || components > mostComponents) {
        if (pixels)
            Free(pixels);
        DefinePlaceholder(texture);
        return;
    }
    texture->Aspect = static_cast<float>(width) / static_cast<float>(height);
    texture->Width = width;
    texture->Height = height;
    texture->Components = components;
    HandOver(texture, pixels);
    Free(pixels);
    BoundTextures[key] = {texture->GLId, width, height, components, texture->Aspect};
}

/// Whether the texture has got another definition, which kept drawings know nothing of.
bool Redefine(Texture* texture) {
    if (!TheTextureDefinitionSlots.DefineImage)
        return false;
    const int oldId = texture->GLId;
    Define(texture);
    return texture->GLId != oldId;
}

} // namespace

void DefineTexture(Texture* texture) {
    if (Redefine(texture))
        EveryAppearanceChanged();
}

void DefineAllTextures() {
    bool changed = false;
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        changed |= Redefine(texture);
    if (changed)
        EveryAppearanceChanged();
    if (TheTextureDefinitionSlots.DirtyTextureGizmo)
        TheTextureDefinitionSlots.DirtyTextureGizmo();
}

void FreeBoundTextures() {
    BoundTextures.clear();
}
