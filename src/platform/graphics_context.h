// The rendering context behind the graphics layer: made without any display, or handed over by the desktop window.
#pragma once

#include <string>

namespace gl {

// Makes a rendering context that needs no display and no device, and makes it current; everything is then drawn into
// surfaces in memory. Calls InitialiseGraphics. False, with one line in `error`, when no driver offers one. There is
// one such context; after CloseGraphics it serves again.
bool OpenHeadlessContext(std::string& error);

// Prepares drawing in the context that is current, whoever made it (OpenGL 3.3 core at least). The drawing scale must
// be set before (SetDrawingScale). False, with one line in `error`, when the context lacks what the layer needs.
// Calling it again does nothing.
bool InitialiseGraphics(std::string& error);

// True once InitialiseGraphics has succeeded and until CloseGraphics.
bool GraphicsReady();

// Releases everything that lives in graphics memory (programs, buffers, textures, recordings) and forgets all
// definitions but those of fonts. Surfaces must be gone. The context itself stays with whoever made it; a headless one
// stays too (some drivers leak when it is ended).
void CloseGraphics();

// The driver computes pictures on the processor. Multisampling is then refused and lighting is per vertex.
bool SoftwareRenderer();

// The largest number of samples a pixel that surfaces may have; 1 when multisampling is not granted. It is granted
// where the driver has it and is not a software renderer; KIRVO_MULTISAMPLE=0 forbids it, a number above 1 forces it.
int GrantedSamples();

// Says that somebody else has called OpenGL in this context since the layer drew last (bindings, blending, viewport,
// scissor...): the layer then sets all its state again before it draws. Cheap; call it after composing the screen.
void ForgetGraphicsState();

} // namespace gl
