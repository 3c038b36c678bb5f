// What the numbers of materials, lights, textures and patterns stand for. For the layer's own modules.
#pragma once

#include <array>
#include <cstdint>

namespace gl {

using Rgb = std::array<float, 3>;

struct MaterialDefinition {
    Rgb emission = {0, 0, 0}, ambient = {0.2f, 0.2f, 0.2f}, diffuse = {0.8f, 0.8f, 0.8f}, specular = {0, 0, 0};
    float shininess = 0, alpha = 1;

    bool operator==(const MaterialDefinition&) const = default;
};

struct LightDefinition {
    Rgb ambient = {0, 0, 0}, colour = {1, 1, 1};
    std::array<float, 4> position = {0, 0, 1, 0};

    bool operator==(const LightDefinition&) const = default;
};

struct ModelDefinition {
    Rgb ambient = {0.2f, 0.2f, 0.2f};
    float twoSided = 0;

    bool operator==(const ModelDefinition&) const = default;
};

// Null when the number is not defined.
const MaterialDefinition* FindMaterialDefinition(int index);
const LightDefinition* FindLightDefinition(int index);
const ModelDefinition* FindModelDefinition(int index);

// Changes whenever one of these does.
extern uint32_t LightingDefinitions;

// The driver's name of a texture; 0 when it is not defined.
unsigned FindTexture(int index);
// 1 modulate, 2 blend, 3 decal; 0 when it is not defined.
int FindEnvironment(int index);
// One white pixel.
unsigned WhiteTexture();

// Back to the beginning, each for its module.
void DeleteAllTextures();
void ForgetLightingDefinitions();
void ForgetPatterns();

// The 16 rows of a pattern (32 and 64 wide ones are cut down to their first 16 bits), null when it is solid.
const std::array<int32_t, 16>* FindPattern(int index);
// The bits of a line style; all set when it is solid.
uint16_t FindLineStyle(int index);

} // namespace gl
