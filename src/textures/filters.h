#pragma once

// The texture filters: tokens of the graphics layer, kept as floats in textures and files, and their names.

inline constexpr float FilterDefault = 0;
inline constexpr float FilterPoint = 0x110;
inline constexpr float FilterBilinear = 0x220;
inline constexpr float FilterBicubic = 0x230;
inline constexpr float FilterSharpen = 0x240;
inline constexpr float FilterMipmapPoint = 0x121;
inline constexpr float FilterMipmapLinear = 0x122;
inline constexpr float FilterMipmapBilinear = 0x123;
inline constexpr float FilterMipmapTrilinear = 0x124;

struct NamedFilter {
    const char* Name;
    float Token;
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
        if (filter.Token == token)
            return filter.Name;
    return TextureFilters[0].Name;
}
