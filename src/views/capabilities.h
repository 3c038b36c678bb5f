#pragma once

// What the renderer can do, found out once; flags. ItsARealityEngine and MultiSampling are the toolkit's,
// TextureAvailable stands with the display flags.

extern int LoadsOfColours;           // more than 4 bits a colour component, or 4 with dithering
extern int FastTexture;              // texturing is fast
extern int ItsAVGX;                  // textures need subdivision on the screen
extern int FancyCursor;              // cursors of two bit planes
extern int ClipPlanesAvailable;      // the renderer can clip to the work area
extern int TwoSideLightingAvailable; // lighting models may be two-sided
extern int BlendingAvailable;        // transparency by blending
extern int LineSmoothingAvailable;   // smooth lines
extern int AlphaFunctionAvailable;   // pixels can be dropped by their alpha
extern int AlphaTest64Usable;        // a threshold of 64 cuts out textures well

/// Sets the flags. A renderer without depth buffer ends the program with status 666 and a message.
void SussGraphicsStuff();
