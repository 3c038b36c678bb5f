#pragma once

#include "geometry/matrices.h"
#include "gooey/draw.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "views/view_transform.h"

/// Drawing in window pixels for the length of a scope; matrices and viewport are as before afterwards, whatever was
/// done to them.
class PixelScope {
  public:
    PixelScope() : Projection(LoadedProjection()) {
        gl::pushviewport();
        gl::pushmatrix();
        VanillaView();
    }

    ~PixelScope() {
        gl::popmatrix();
        gl::popviewport();
        gl::mmode(gl::MPROJECTION);
        LoadGLMatrix(Projection);
        gl::mmode(gl::MVIEWING);
    }

    PixelScope(const PixelScope&) = delete;
    PixelScope& operator=(const PixelScope&) = delete;

  private:
    Matrix Projection;
};
