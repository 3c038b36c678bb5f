// Shader variants: one source, specialised by definitions, compiled when first needed. For the layer's own modules.
#pragma once

#include <cstdint>
#include <string>

namespace gl {

// What a variant is made for. Each combination is a program of its own: a uniform switch inside one program was
// measured to take twice the time.
struct ShaderVariant {
    uint8_t lights = 0;         // light sources; used when lit
    bool lit = false;           // vertices with a material slot are lit
    bool localLights = false;   // one of the lights is not at infinity
    bool twoSided = false;      // back faces take the other side's colour
    bool manyMaterials = false; // materials are looked up by slot
    uint8_t environment = 0;    // texture environment, 0 without texture: 1 modulate, 2 blend, 3 decal
    uint8_t generation = 0;     // texture coordinates of recordings: 0 given, or a GenerationMode
    bool text = false;          // the texture is a glyph atlas: coverage
    bool index = false;         // the target is the overlay
    bool flat = false;
    bool pattern = false;
    bool alphaTest = false;
    bool lines = false; // segments widened to quadrilaterals
    bool dashed = false, smooth = false;
    bool depthCue = false;
    bool recorded = false;  // vertices are in model coordinates
    bool precise = false;   // with a second part of the position (recordings)
    uint8_t clipPlanes = 0; // bits of the planes that are on
    bool facingLines = false;

    bool operator==(const ShaderVariant&) const = default;
};

constexpr int MaterialSlots = 32;

// Attribute locations.
enum Attribute {
    PositionAttribute,
    NormalAttribute,
    SlotAttribute,
    ColourAttribute,
    TexelAttribute,
    OtherEndAttribute,
    LineAttribute,
    PositionRestAttribute,
    OtherEndRestAttribute
};

// A linked program and where its uniforms are (-1 when it has no such).
struct Program {
    unsigned name = 0;
    bool used = false; // uniforms that never change are set
    int projection, viewing, normalMatrix, reference, referenceRest, materials, lightDirection, lightHalf, lightColour,
        textureMatrix, texture, pattern, patternOrigin, pixelScale, pointSize, generationPlanes, alphaTest, lineSize,
        lineStyle, cue, cueColours, clip;
    // Versions of the contents uploaded last, to skip uploads that change nothing.
    uint32_t projectionVersion = 0, lightingVersion = 0, lightingDefinitions = 0, textureMatrixVersion = 0;
};

// The program of a variant; ends the program with a message when the driver refuses it (a fault of the layer).
Program& ProgramFor(const ShaderVariant& variant);
// Releases all programs.
void DeletePrograms();

} // namespace gl
