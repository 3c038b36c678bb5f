#pragma once

// The texture filters: tokens of the graphics layer, kept as floats in textures and files, and their names.

enum TextureFilter : int {
    FilterDefault = 0,
    FilterPoint = 0x110,
    FilterBilinear = 0x220,
    FilterBicubic = 0x230,
    FilterSharpen = 0x240,
    FilterMipmapPoint = 0x121,
    FilterMipmapLinear = 0x122,
    FilterMipmapBilinear = 0x123,
    FilterMipmapTrilinear = 0x124
};

struct NamedFilter {
    const char* Name;
    TextureFilter Token;
};

inline constexpr NamedFilter TextureFilters[] = {{"Default", FilterDefault},
                                                 {"Point", FilterPoint},
                                                 {"Bilinear", FilterBilinear},
                                                 {"Bicubic", FilterBicubic},
                                                 {"Sharpen", FilterSharpen},
                                                 {"Mipmap point", FilterMipmapPoint},
                                                 {"Mipmap linear", FilterMipmapLinear},
                                                 {"Mipmap bilinear", FilterMipmapBilinear},
                                                 {"Mipmap trilinear", FilterMipmapTrilinear}};

/// "Default" for a token that no filter has.
constexpr const char* FilterName(float token) {
    for (const NamedFilter& filter : TextureFilters)
        if (static_cast<float>(filter.Token) == token)
            return filter.Name;
    return TextureFilters[0].Name;
}
