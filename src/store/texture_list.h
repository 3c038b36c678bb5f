#pragma once

#include "store/records.h"

// The current file's textures, in the order in which they were added.

/// Appends the texture; unless merging it becomes the current one.
void AddTextureToList(Texture* texture);

/// The first texture with this file name, or null.
Texture* TextureExists(const char* fileName);

/// Gives a texture of the list a copy of the file name: names must not be changed otherwise.
void RenameTexture(Texture* texture, const char* fileName);

/// Takes the texture off the list and frees it; a deleted current texture is succeeded by a neighbour. Polygons that
/// use it are not changed: replace it first.
void DeleteTexture(Texture* texture);

/// Takes the texture off the list and leaves it to the caller.
void TakeTextureOffList(Texture* texture);

/// Deletes the current texture, when there is one.
void DeleteCurrentTexture();

/// Exchanges a texture with the one after it, which must exist.
void ExchangeTextureWithNext(Texture* texture);

void FreeAllTextures();

/// 1 when file names, filters and flags are equal.
int TexturesAreTheSame(const Texture* a, const Texture* b);

/// The first texture of the list that is the same, or null.
Texture* FindTexture(const Texture* texture);

/// Makes every polygon of the file that uses one texture use another. Discards all undo snapshots and the polygon
/// clipboard.
void SearchAndReplaceTexture(Texture* old, Texture* replacement);
