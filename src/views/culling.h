#pragma once

#include "geometry/matrices.h"
#include "store/view_record.h"

/// False when the box (3 doubles each, model space) lies wholly beyond one of the view's edges, or behind the eye.
bool BoxIsInView(const View* view, const Matrix& toEye, const double* min, const double* max);
