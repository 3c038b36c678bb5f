#pragma once

#include "store/records.h"

#include <cstdint>

// The switches of the rendering state that drawing uses, for the current window.

/// Set-up of every new window: viewing matrix, no culling, no depth buffer, the fill patterns, the interface's
/// materials. Belongs into WindowInit.
void InitGraphics();

/// Lighting model and lights, fixed to the eye; defines the materials anew when MaterialsNeedDefining is set. At the
/// start of every view's drawing.
void SetLighting();
/// The white light, and the grey one with which the model steps back behind what a tool shows.
void NormalLight();
void DimLight();

/// Binds the material; without blending its transparency becomes a screen-door pattern.
void BindMaterial(const Material* material);
/// Binds the texture; null: none.
void BindTexture(const Texture* texture);
/// Flag: textures of the view being drawn are subdivided.
extern int DoSubDivide;

/// Transparency on or off; only changes do anything.
void Blending(int on);
/// Cuts out the transparent texels of textures.
void TextureBlending(int on);
/// Only the test that cuts them out.
void TextureCutting(int on);
void LineAntialiasing(int on);
void Subpixelling(int on);

/// Clears colour and depth of the current window.
void cls(std::uint32_t colour);

/// Saves the screen mask and narrows it to the rectangle (window pixels); 0 when nothing is left of it, the mask then
/// stays. Each call, whatever it returns, needs one PopScrmask. More than 16 end the program with status 666, as does a
/// pop too many.
int PushScrmask(int x, int y, int width, int height);
void PopScrmask();
