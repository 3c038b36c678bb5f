#pragma once

#include "gooey/window.h"
#include "platform/windows.h"
#include "store/storage.h"
#include "views/capabilities.h"
#include "views/display_flags.h"
#include "views/rendering_state.h"

#include <cstdlib>

/// Opens a window in memory for drawing models of a store that is empty.
inline void OpenBenchWindow(int width, int height) {
    setenv("KIRVO_DISPLAY", "headless:1000x700", 1);
    setenv("KIRVO_SCALE", "1", 0);
    InitialiseStorage();
    WindowInit = InitGraphics;
    gl::prefposition(100, 100 + width - 1, 100, 100 + height - 1);
    OpenWindow("View", WindowDoubleBuffered, 0x402010, nullptr, nullptr, nullptr, nullptr, 0, nullptr);
    SussGraphicsStuff();
    SolidView = ObjectIsolated = 1;
}
