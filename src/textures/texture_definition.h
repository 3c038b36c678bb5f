#pragma once

#include "store/records.h"

// Handing textures to the graphics layer. A definition is made once for an image file with its settings and shared by
// the textures that are the same; definitions are never given back during a run.

/// What defining a texture needs of the layers above. Filled once at start-up.
struct TextureDefinitionSlots {
    /// Defines texture `index` from a pixel block as ReadImage gives it, with a list of property tokens, each followed
    /// by its value and `count` floats in all, ended by a 0. Copies both. While it is null nothing is defined and no
    /// image is read.
    void (*DefineImage)(int index, int components, int width, int height, const void* image, int count,
                        const float* properties) = nullptr;

    /// Non-zero on graphics hardware that has every filter and the formats of reduced accuracy. Null: it has not.
    int (*IsHighEnd)() = nullptr;

    /// So many of the images that are being read together have been read: called after each of them. Skipped when null.
    void (*ReadingProgress)(int read, int count) = nullptr;

    /// Marks the texture window for redrawing. Skipped when null.
    void (*DirtyTextureGizmo)() = nullptr;
};

extern TextureDefinitionSlots TheTextureDefinitionSlots;

/// Gives the texture its definition number and, when the definition is new, its size and aspect from the image. An
/// image that has changed in its file is read again. A texture whose image cannot be read, of which a warning tells
/// why, keeps the picture that it had; if it had none, it gets a grey chequer of 16 by 16 pixels, under a number of its
/// own.
void DefineTexture(Texture* texture);

/// DefineTexture for every texture of the current file, their images being read by all processors at once.
void DefineAllTextures();

/// Forgets which definitions were made, when the window that they were made for closes.
void FreeBoundTextures();
