#pragma once

#include "gooey/palette_grid.h"
#include "gooey/tool_window.h"
#include "store/records.h"

// The window that shows the textures of the file, and from which they are put on polygons.

/// Null while it is closed.
extern Window* TextureGizmo;
extern const ToolWindow TextureGizmoWindow;
extern int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
/// Flag, kept with the defaults: opened again at the next start.
extern int TextureGizmoOpen;
extern PaletteGrid TextureGizmoGrid;

/// Opens it, or raises it when it is open. Nothing where textures cannot be shown.
void OpenTextureGizmo();

/// Makes a texture current, with all that follows it.
void ChangeTextureSelection(Texture* texture);
/// Makes the texture of the one selected polygon current.
void FindPolygonsTexture();

/// Move the current texture so many places towards the head or the tail of the list.
void MoveTextureLeft(int places);
void MoveTextureRight(int places);

/// Shows both samples anew in place: after every change of the current material, the lighting or the current texture.
void RedrawTextureSweeties();
/// After a change of the current material.
void ChangeTextureMaterial();
/// Shows all of it anew.
void DirtyTextureGizmo();

/// While a modelling tool runs the gizmo hides what edits polygons, and its menus offer only what the tool can follow.
void DisableTextureGizmo();
void EnableTextureGizmo();
int TextureGizmoIsDisabled();
