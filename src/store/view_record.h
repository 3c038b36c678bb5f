#pragma once

#include "geometry/matrices.h"

#include <cstdint>

/// One model view: how the model is oriented and placed in front of the eye. An all-zero record is not set up; it is
/// made from the defaults before its next use.
struct View {
    std::int32_t Valid;       // 0: not set up
    std::int32_t Stale;       // 1: the projection must be recomputed for the window's aspect before the next draw
    std::int32_t Perspective; // 1: the 3D view; 0: a 2D view
    std::int32_t Direction;   // of a 2D view: 0 Top, 1 Bottom, 2 Left, 3 Right, 4 Front, 5 Back
    Matrix ViewMatrix;        // orientation of the model relative to the eye, and its position
    Matrix Projection;        // as last computed
    Matrix GridMatrix;        // placement of the grid plane
    Matrix Transform;         // the full viewing transform
    double Zoom;              // magnification of a 2D view
    std::int32_t HasCentre;   // 1: a centre of rotation has been picked
    double Centre[3];         // that centre, model space
    float Near, Far;          // depth range of the last set-up, eye space
    float Size;               // size measure of the last set-up
};

/// The cube of interest of an object or of the scene. An all-zero record is not set up.
struct WorkAreaRecord {
    std::int32_t Valid;   // 0: not set up
    std::int32_t TopView; // 1: its window looks from the top; 0: from the front
    double Centre[3];     // of the cube, model space
    double Magnification; // factor by which the model views are enlarged
    double HalfSize;      // half the edge of the cube, metres
};

inline constexpr int ViewportLimit = 3;      // views of an object, and of the scene
inline constexpr int DefaultView2DCount = 6; // one a direction

/// Viewports shown in the main window: 1 or 3.
extern int NoViewports;
