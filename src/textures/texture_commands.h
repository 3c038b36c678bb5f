#pragma once

// What the user does to the list of textures. Each asks as far as needed and goes on when the answer comes; failures
// are told.

/// Adds an image, chosen by the user, to the list.
void LoadTexture();

/// Adds the image of this path to the list.
void LoadTextureFile(const char* path);

/// Gives the current texture another image, chosen by the user.
void ReplaceTexture();

/// Deletes the current texture; polygons that have it lose it, after a question.
void DoTextureDelete();

/// After a question.
void DeleteAllTextures();
