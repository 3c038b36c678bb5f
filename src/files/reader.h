#pragma once

#include <cstddef>

/// Loads a model file of any version into the current file of the store; the texture images that it names are looked
/// for with FilePath as the model's directory. 1 on success. 0 on failure, told to the user unless the file does not
/// exist or FileErrorOk is set: FileErrorNumber says why; a file that is missing or no model file at all leaves the
/// store as it was, every other failure leaves it empty.
int ReadKirvo(const char* name);

/// ReadKirvo for a file that is already in memory; `bytes` may be null when `size` is 0. It is never FileNotFound.
int ReadKirvoFromMemory(const void* bytes, std::size_t size);

/// Flag: the last read skipped data that only a newer version knows.
extern int InformationLost;

/// Flag: an image file that the last read file names could not be found or loaded.
extern int TexturesMissing;

/// How far the last read came, in bytes from the beginning of the file: just behind what it read last, be that the end
/// tag or where it met an error.
extern std::size_t FileReached;

/// Version of the file that is being read, or was last, in hundredths.
extern int FileVersion;

/// Turns the texture numbers that the polygons of the current object carry in Mark into textures, by the textures'
/// Index. A number that no texture carries gives none.
void SussTextures();

/// The answer to the notice that textures are missing: on OK opens the manual.
void ShowTextureInfo(int ok);
