#pragma once

struct MenuEntry;

// The menus of the texture gizmo, and what they do.

inline constexpr char TextureGizmoPage[] = "R_TextureGizmo";

/// Null-terminated.
extern const MenuEntry* const TextureMenus[];
/// An entry has been chosen; others are ignored.
void HandleTextureMenu(int item);

/// The rows of buttons that change the selected polygons: which one is in ButtonChoice.
void ChangeTexturesButton();
void AdjustTextureButton();
