#include "platform/batch_key.h"

#include <algorithm>
#include <cmath>

namespace gl {

PixelBox BoxInTarget(const BatchKey& key, const ScreenBox& box) {
    const int left = ToPixels(key.originX + box.left), bottom = ToPixels(key.originY + box.bottom);
    return {left, bottom, ToPixels(key.originX + box.right + 1) - left, ToPixels(key.originY + box.top + 1) - bottom};
}

PixelBox ReachOfBox(const Matrix4& m, const double* low, const double* high, const PixelBox& viewport, int margin) {
    double left = 1e300, right = -1e300, bottom = 1e300, top = -1e300;
    for (int corner = 0; corner < 8; corner++) {
        const double x = corner & 1 ? high[0] : low[0], y = corner & 2 ? high[1] : low[1],
                     z = corner & 4 ? high[2] : low[2];
        const double w = x * m[3] + y * m[7] + z * m[11] + m[15];
        if (!(w > 1e-9)) { // reaches behind the eye: may be anywhere in the viewport
            left = bottom = -1;
            right = top = 1;
            break;
        }
        const double px = (x * m[0] + y * m[4] + z * m[8] + m[12]) / w,
                     py = (x * m[1] + y * m[5] + z * m[9] + m[13]) / w;
        left = std::min(left, px);
        right = std::max(right, px);
        bottom = std::min(bottom, py);
        top = std::max(top, py);
    }
    if (!(left <= right && bottom <= top)) {
        left = bottom = -1;
        right = top = 1;
    }
    auto pixel = [](double value, int size) { return (std::clamp(value, -1.0, 1.0) + 1) * 0.5 * size; };
    const int x1 = static_cast<int>(std::floor(pixel(left, viewport.width))) - margin,
              x2 = static_cast<int>(std::ceil(pixel(right, viewport.width))) + margin,
              y1 = static_cast<int>(std::floor(pixel(bottom, viewport.height))) - margin,
              y2 = static_cast<int>(std::ceil(pixel(top, viewport.height))) + margin;
    return {viewport.x + x1, viewport.y + y1, x2 - x1, y2 - y1};
}

} // namespace gl
