#pragma once

#include "store/records.h"

// Texture palettes: lists of images with their settings kept in text files, from which any model can take them.

inline constexpr char TexturesExtension[] = ".kirvo_textures";

/// Flag, a preference: a new model starts with the textures of the user's default palette.
extern int LoadTexturesOnNew;

/// What ReadTexturesFile has read, in the order of the file, until the list is given another place. Owned here.
extern Texture* LoadedTextures;

/// Reads a palette into LoadedTextures, which is emptied first. An entry whose image is missing is left out; a damaged
/// one keeps the settings before the damage. 1 when there is any texture.
int ReadTexturesFile(const char* name);

/// Writes all textures of the current file. 0 when that fails, which is told on the standard error stream; an older
/// file of that name then stays as it was.
int WriteTexturesFile(const char* name);

void FreeLoadedTextures();

/// Moves those of LoadedTextures that are not there yet into the current file's list, and defines them.
void MergeLoadedTextures();

/// The palette that new models may start with.
const char* DefaultTexturesFile();
int SaveDefaultTextures();
/// When LoadTexturesOnNew is set and start-up is over: gives the new model its textures, of which the first becomes
/// current.
void LoadDefaultTextures();

/// Commands: the user chooses a file, which is then loaded into the list or written from it. Failures are told.
void LoadTexturePalette();
void SaveTexturePalette();
