#include "views/culling.h"

bool BoxIsInView(const View* view, const Matrix& toEye, const double* min, const double* max) {
    // Markers and wide lines reach some pixels beyond the box.
    constexpr double margin = 1.05;
    const Matrix& projection = view->Projection;
    unsigned beyondAll = ~0U;
    for (int corner = 0; corner < 8 && beyondAll; ++corner) {
        double point[3];
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = (corner >> axis & 1 ? max : min)[axis];
        TransformPoint(point, toEye, point);
        const double w = view->Perspective ? -point[2] : 1;
        const double x = point[0] * projection[0][0], y = point[1] * projection[1][1];
        const bool beyond[] = {x > w * margin, x<-w * margin, y> w * margin, y < -w * margin, w <= 0};
        unsigned code = 0;
        for (unsigned edge = 0; edge < 5; ++edge)
            code |= static_cast<unsigned>(beyond[edge]) << edge;
        beyondAll &= code;
    }
    return beyondAll == 0;
}
