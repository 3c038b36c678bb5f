#pragma once

#include "views/traversal.h"

#include <vector>

/// Where a corner appears: window pixels, and depth, which grows away from the eye.
struct ScreenCorner {
    double X, Y, Depth;
};

using ScreenRing = std::vector<ScreenCorner>;

/// The projection that the view set up last draws with, whose depths span what it shows.
Matrix GetSelectProjection();

/// Takes points of one object as a view shows it to the current window.
class RingProjector {
  public:
    RingProjector(const ShownObject& shown, const Matrix& projection);

    /// What is seen of the polygon: its ring, cut at the work area while it is in force and, in the 3D view, before the
    /// eye; empty when nothing is left. Valid until the next call.
    const ScreenRing& Project(const Polygon* polygon);

    /// Where a point appears (model space, or eye space); false for one that does not lie before the eye.
    bool ProjectPoint(const double* point, ScreenCorner& corner) const;
    bool ProjectEyePoint(const double* eye, ScreenCorner& corner) const;

    /// True for what this projector gave of a polygon that turns its front to the eye: by its first three corners in
    /// different places. A ring without three such does not.
    bool FacesEye(const ScreenRing& ring) const;

    /// The distance from the eye at which the 3D view has a depth; 1 in 2D views.
    double DistanceOf(double depth) const;

  private:
    void ProjectClipped(const Polygon* polygon);
    void AddCorner(const double* eye);

    Matrix SelectTransform;  // model to eye space
    Matrix SelectProjection; // eye to clip space
    Matrix SceneToEye;
    double HalfWidth, HalfHeight; // of the window, pixels
    bool Perspective, Mirroring;
    std::vector<double> Eyes; // the corners in eye space
    ScreenRing Ring;
};

/// Cuts the ring at the drag box; empty when nothing is left.
void ClipPolygonToDragBox(ScreenRing& ring);
