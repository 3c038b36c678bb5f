#pragma once

// What all ways of putting textures on polygons share, and the commands that need no tool. Each command takes the undo
// snapshot and has the model views drawn again.

/// 1 when a tool may put the current texture on the selected polygons: there are both, an object is edited, and no
/// other tool runs. The user has been told what the selection or the mode lacks.
int CanApplyTexture();

/// A tool begins to put textures on polygons: textures are shown from now on, and `apply` runs whenever the current
/// texture or material changes.
void BeginApplication(void (*apply)());
/// It has ended.
void EndApplication();

/// The object's polygons have got other textures or coordinates, which is to be seen.
void TexturesWereApplied();

/// What the selected polygons get of the current texture and material. Only those that have a texture get another one.
enum class TextureChange { Material, Texture, Both };
void ChangeTextures(TextureChange change);
/// Leaves the selected polygons without texture.
void RemoveTextures();
/// Gives the selected polygons the current texture as a reflection of their surroundings.
void ApplyEnvironmentMap();
