#pragma once

// The textures of the current file as its polygons use them. All of these discard the undo snapshots and the polygon
// clipboard.

/// Sets Used in every texture: 1 when a polygon of the file has it, else 0.
void FlagUsedTextures();

void DeleteUnusedTextures();

/// Takes the current texture off every polygon and deletes it. Nothing without one.
void FinishTextureDelete();

/// Takes every texture off every polygon and deletes it.
void FinishDeletingAllTextures();
