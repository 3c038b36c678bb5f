#include "platform/textures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/drawing_state.h"
#include "platform/driver_state.h"
#include "platform/graphics_context.h"
#include "platform/recorder.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

namespace {

std::map<int, unsigned> Textures;
std::map<int, int> Environments;
unsigned White = 0;

struct Settings {
    float minFilter = 0, magFilter = 0, format = 0, wrapS = TX_REPEAT, wrapT = TX_REPEAT;
};

Settings ReadSettings(int count, const float* list) {
    Settings settings;
    const std::pair<float, float Settings::*> known[] = {{TX_MINFILTER, &Settings::minFilter},
                                                         {TX_MAGFILTER, &Settings::magFilter},
                                                         {TX_INTERNAL_FORMAT, &Settings::format},
                                                         {TX_WRAP_S, &Settings::wrapS},
                                                         {TX_WRAP_T, &Settings::wrapT}};
    for (int i = 0; list && (count <= 0 || i + 1 < count) && list[i] != TX_NULL; i += 2)
        for (auto& [token, field] : known)
            if (list[i] == token)
                settings.*field = list[i + 1];
    return settings;
}

// The filters' meaning for the driver; bicubic and sharpen are the best that it has.
int MinFilter(float token) {
    const std::pair<float, int> filters[] = {{TX_POINT, GL_NEAREST},
                                             {TX_BILINEAR, GL_LINEAR},
                                             {TX_BICUBIC, GL_LINEAR_MIPMAP_LINEAR},
                                             {TX_MIPMAP_POINT, GL_NEAREST_MIPMAP_NEAREST},
                                             {TX_MIPMAP_LINEAR, GL_NEAREST_MIPMAP_LINEAR},
                                             {TX_MIPMAP_BILINEAR, GL_LINEAR_MIPMAP_NEAREST},
                                             {TX_MIPMAP_TRILINEAR, GL_LINEAR_MIPMAP_LINEAR}};
    for (auto& [filter, value] : filters)
        if (token == filter)
            return value;
    return GL_LINEAR_MIPMAP_LINEAR;
}

struct Pixels {
    int width, height, components;
    std::vector<uint8_t> bytes; // rows without padding
};

// The image as the driver takes it: components forwards instead of backwards, rows without padding.
Pixels Unpacked(int components, int width, int height, const void* image) {
    Pixels pixels = {width, height, components, std::vector<uint8_t>(static_cast<size_t>(width) * height * components)};
    const size_t pitch = (static_cast<size_t>(width) * components + 3) / 4 * 4;
    uint8_t* to = pixels.bytes.data();
    for (int y = 0; y < height; y++) {
        const uint8_t* from = static_cast<const uint8_t*>(image) + y * pitch;
        for (int x = 0; x < width; x++, from += components)
            for (int c = components - 1; c >= 0; c--)
                *to++ = from[c];
    }
    return pixels;
}

// Half the size, each pixel the mean of the up to four that it replaces.
Pixels Halved(const Pixels& from) {
    Pixels to = {std::max(from.width / 2, 1), std::max(from.height / 2, 1), from.components, {}};
    to.bytes.resize(static_cast<size_t>(to.width) * to.height * to.components);
    for (int y = 0; y < to.height; y++)
        for (int x = 0; x < to.width; x++)
            for (int c = 0; c < to.components; c++) {
                int sum = 0;
                for (int k = 0; k < 4; k++) {
                    const int fromX = std::min(2 * x + (k & 1), from.width - 1);
                    const int fromY = std::min(2 * y + (k >> 1), from.height - 1);
                    sum += from.bytes[(static_cast<size_t>(fromY) * from.width + fromX) * from.components + c];
                }
                to.bytes[(static_cast<size_t>(y) * to.width + x) * to.components + c] =
                    static_cast<uint8_t>((sum + 2) / 4);
            }
    return to;
}

void Upload(const Pixels& pixels, bool reduced) {
    const unsigned formats[] = {GL_RED, GL_RG, GL_RGB, GL_RGBA};
    const int full[] = {GL_R8, GL_RG8, GL_RGB8, GL_RGBA8}, small[] = {GL_R8, GL_RG8, GL_RGB565, GL_RGBA4};
    const int kind = pixels.components - 1;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, reduced ? small[kind] : full[kind], pixels.width, pixels.height, 0, formats[kind],
                 GL_UNSIGNED_BYTE, pixels.bytes.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    // One component is an intensity, a second one an alpha.
    if (kind < 2) {
        for (unsigned channel : {GL_TEXTURE_SWIZZLE_R, GL_TEXTURE_SWIZZLE_G, GL_TEXTURE_SWIZZLE_B})
            glTexParameteri(GL_TEXTURE_2D, channel, GL_RED);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_A, kind == 1 ? GL_GREEN : GL_ONE);
    }
    glGenerateMipmap(GL_TEXTURE_2D);
}

} // namespace

void texdef2d(int index, int components, int width, int height, const void* image, int count, const float* list) {
    if (index < 1 || components < 1 || components > 4 || width < 1 || height < 1 || !image) {
        std::fprintf(stderr, "Graphics: texture %d of %d x %d pixels and %d components cannot be defined\n", index,
                     width, height, components);
        return;
    }
    if (!GraphicsReady())
        return;
    FlushDrawing();
    const Settings settings = ReadSettings(count, list);
    Pixels pixels = Unpacked(components, width, height, image);
    int largest = 1024;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    while (pixels.width > largest || pixels.height > largest)
        pixels = Halved(pixels);
    unsigned& name = Textures[index];
    if (!name)
        glGenTextures(1, &name);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, MinFilter(settings.minFilter));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, settings.magFilter == TX_POINT ? GL_NEAREST : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, settings.wrapS == TX_CLAMP ? GL_CLAMP_TO_EDGE : GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, settings.wrapT == TX_CLAMP ? GL_CLAMP_TO_EDGE : GL_REPEAT);
    Upload(pixels, settings.format == TX_I12A_3 || settings.format == TX_I12A_4);
    ForgetDriverState();
    StateChanged = true;
}

bool istexture(int index) {
    return FindTexture(index) != 0;
}

unsigned FindTexture(int index) {
    const auto found = index > 0 ? Textures.find(index) : Textures.end();
    return found == Textures.end() ? 0 : found->second;
}

unsigned WhiteTexture() {
    if (!White) {
        const uint32_t pixel = 0xFFFFFFFF;
        glGenTextures(1, &White);
        glBindTexture(GL_TEXTURE_2D, White);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, &pixel);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        ForgetDriverState();
    }
    return White;
}

void DeleteAllTextures() {
    for (auto& [index, name] : Textures)
        glDeleteTextures(1, &name);
    Textures.clear();
    Environments.clear();
    glDeleteTextures(1, &White);
    White = 0;
}

void texbind(int target, int index) {
    if (RecordSetting(TextureSetting, index, [=] { texbind(target, index); }) || State().Textures.texture == index)
        return;
    State().Textures.texture = index;
    StateChanged = true;
}

void tevdef(int index, int mode) {
    if (index < 1 || mode < TV_MODULATE || mode > TV_DECAL) {
        std::fprintf(stderr, "Graphics: texture environment %d of mode %d cannot be defined\n", index, mode);
        return;
    }
    const auto found = Environments.find(index);
    if (found != Environments.end() && found->second == mode)
        return;
    FlushDrawing();
    Environments[index] = mode;
    StateChanged = true;
}

int FindEnvironment(int index) {
    const auto found = index > 0 ? Environments.find(index) : Environments.end();
    return found == Environments.end() ? 0 : found->second - TV_MODULATE + 1;
}

void tevbind(int target, int index) {
    if (RecordSetting(EnvironmentSetting, index, [=] { tevbind(target, index); }) ||
        State().Textures.environment == index)
        return;
    State().Textures.environment = index;
    StateChanged = true;
}

void texgen(int coordinate, int mode, const float* plane) {
    if ((coordinate != TX_S && coordinate != TX_T) || mode < TG_OFF || mode > TG_SPHEREMAP)
        return;
    std::array<float, 4> values = {0, 0, 0, 0};
    if (plane && (mode == TG_LINEAR || mode == TG_CONTOUR))
        std::copy_n(plane, 4, values.begin());
    if (RecordCommand([=] { texgen(coordinate, mode, values.data()); }))
        return;
    TextureState::Generation& generation = State().Textures.generation[coordinate];
    if (mode == TG_OFF || mode == TG_ON) {
        generation.on = mode == TG_ON;
        return;
    }
    generation.mode = mode;
    generation.plane = {values[0], values[1], values[2], values[3]};
    if (mode != TG_CONTOUR)
        return;
    Matrix4 inverse;
    Invert(EffectiveViewing(), inverse);
    for (int row = 0; row < 4; row++)
        generation.plane[row] = inverse[4 * row] * values[0] + inverse[4 * row + 1] * values[1] +
                                inverse[4 * row + 2] * values[2] + inverse[4 * row + 3] * values[3];
}

} // namespace gl
