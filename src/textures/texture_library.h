#pragma once

#include "base/file_names.h"
#include "store/records.h"

// Textures by their image files: adding one to the current file's list, and finding the image that a model file names.

/// The user's texture directory, empty when there is none: the place of images that do not lie beside their model.
extern char TextureDir[MaxFileName];

/// Where the last image was taken from, for the next selection of one. Both are empty before the first.
extern char LastTextureDir[MaxFileName];
extern char LastTextureName[MaxFileName];

/// Called by FindTextureFile, beside its warning, with the path of an image that was not found. Skipped when null.
extern void (*TextureNotFoundSlot)(const char* path);

/// The texture with this image file, appended to the list when it is not there yet; null when the file is not an image.
/// The path becomes the last texture location. The graphics layer learns of the texture in DefineAllTextures.
Texture* AddTexture(const char* path);

/// Takes the path of an image as the last texture location; a path too long for it is not remembered.
void RememberTextureLocation(const char* path);

/// Finds the image that a model file in FilePath names: beside the model or in the directory textures there, in the
/// working directory or in textures there, in TextureDir, and as it is named. On success writes where it was found to
/// `found` and a trace line to the standard output; otherwise warns on the standard error stream, returns 0, and leaves
/// `found` as it was.
int FindTextureFile(const char* path, char (&found)[MaxFileName]);
