#include "views/capabilities.h"

#include "base/debug.h"
#include "gooey/misuse.h"
#include "platform/capabilities.h"
#include "views/display_flags.h"

#include <cstring>

int LoadsOfColours;
// What the defaults of the display flags depend on before there is a window to ask.
int FastTexture = 1;
int ItsAVGX;
int FancyCursor;
int ClipPlanesAvailable;
int TwoSideLightingAvailable;
int BlendingAvailable;
int LineSmoothingAvailable;
int AlphaFunctionAvailable;
int AlphaTest64Usable;

namespace {

int Has(int inquiry) {
    return gl::getgdesc(inquiry) > 0;
}

} // namespace

void SussGraphicsStuff() {
    if (!Has(gl::GD_DEPTH_BITS))
        EndForMisuse("Sorry, Kirvo needs a zbuffer....\a\n");

    char version[16] = "";
    gl::gversion(version);
    const auto versionHas = [&](const char* name) { return std::strstr(version, name) != nullptr; };

    const int redBits = gl::getgdesc(gl::GD_DOUBLE_BUFFERED_RED);
    LoadsOfColours = redBits > 4 || (redBits == 4 && Has(gl::GD_DITHERING));
    FastTexture = !versionHas("GL4DXG") && !versionHas("GL4DLG") && !versionHas("GL4DNP");
    ItsAVGX = versionHas("GL4DVGX-");
    TextureAvailable = Has(gl::GD_TEXTURE);
    FancyCursor = gl::getgdesc(gl::GD_CURSOR_PLANES) == 2;
    // Developers work with the clipping that other renderers would need; F12 brings the planes back.
    ClipPlanesAvailable = Has(gl::GD_CLIP_PLANES) && !DeveloperBuild;
    TwoSideLightingAvailable = Has(gl::GD_TWO_SIDED_LIGHTING);
    BlendingAvailable = Has(gl::GD_BLENDING);
    LineSmoothingAvailable = Has(gl::GD_LINE_SMOOTHING);
    AlphaFunctionAvailable = Has(gl::GD_ALPHA_FUNCTION);
    AlphaTest64Usable = AlphaFunctionAvailable && (versionHas("GL4DRE") || versionHas("GL4DVGXT"));
}
