#include "palettes/samples.h"

#include "platform/state.h"
#include "tools/spheres.h"

void Sweetie(float x, float y, float radius, int depth) {
    const bool before = gl::getbackface();
    gl::backface(true);
    DrawSphere(x, y, 0, radius, SphereSmooth | SphereDome | SphereFlat, depth);
    gl::backface(before);
}
