#include "platform/capabilities.h"

#include <cstring>

#include "platform/drawing_state.h"
#include "platform/graphics_context.h"
#include "platform/surface.h"

namespace gl {

int32_t getgdesc(int inquiry) {
    const Surface* screen = Overlay();
    switch (inquiry) {
    case GD_XPMAX:
        return screen ? screen->width() - 1 : -1;
    case GD_YPMAX:
        return screen ? screen->height() - 1 : -1;
    case GD_DOUBLE_BUFFERED_RED:
    case GD_SINGLE_BUFFERED_RED:
    case GD_OVERLAY_PLANES:
        return 8;
    case GD_DEPTH_BITS:
        return 24;
    case GD_CURSOR_PLANES:
        return 2;
    case GD_BLENDING:
    case GD_LINE_SMOOTHING:
    case GD_ALPHA_FUNCTION:
    case GD_TWO_SIDED_LIGHTING:
    case GD_TEXTURE:
        return 1;
    case GD_DITHERING:
        return 0;
    case GD_ZMIN:
        return 0;
    case GD_ZMAX:
        return FarthestDepth;
    case GD_CLIP_PLANES:
        return ClipPlanes;
    case GD_MULTISAMPLE:
        return GrantedSamples() > 1 ? GrantedSamples() : 0;
    default:
        return -1;
    }
}

int gversion(char* name) {
    std::strcpy(name, "GL4DRE-3.3");
    return 0;
}

int getplanes() {
    return 24;
}

} // namespace gl
