#pragma once

#include "geometry/matrices.h"
#include "store/view_record.h"
#include "views/shown_extent.h"

// The transforms of views. Model space has z up and +y away from the eye in the front view; eye space has y up and
// looks along -z.

/// From model axes to eye axes: (x, y, z) becomes (x, z, -y).
extern const Matrix p90;
extern const Matrixf p90f;

/// Transform and Projection of the view that was set up last; picking reads them together with the current window's
/// size.
extern Matrixf CurrentViewTransform, CurrentProjection;

/// Loads the view's matrices into the graphics layer and records its Transform, its depth range and Size; Projection is
/// brought to the current window's aspect. `overlay` 1 loads the model matrix alone, so that what follows lies slightly
/// before the model.
void SetUpView(View* view, int overlay);

/// The view's Transform.
Matrix& ViewMat(View* view);
/// The grid's full transform, grid to eye space; overwritten by the next call.
Matrix& GridMat(View* view);

// Matrix calls of the graphics layer for matrices of the program's own type.
void LoadGLMatrix(const Matrix& matrix);
void MultGLMatrix(const Matrix& matrix);
void GetGLMatrix(Matrix& matrix);

/// The projection that the graphics layer has loaded, and another one for the length of a scope: with nearer depths for
/// the same places on the screen, say.
Matrix LoadedProjection();

class ProjectionScope {
  public:
    explicit ProjectionScope(const Matrix& projection);
    ~ProjectionScope();
    ProjectionScope(const ProjectionScope&) = delete;
    ProjectionScope& operator=(const ProjectionScope&) = delete;

  private:
    Matrix Former;
};

/// Field of view of the 3D view from bottom to top, tenths of degrees.
inline constexpr int FieldOfView = 400;

/// Width of the current window divided by its height; 1 without a window.
double WindowAspect();

/// Radius of what the views show, the scene's or the current object's, metres. Always positive and within bounds that
/// projections can work with: a model that has no extent counts as one of a metre.
double ShownRadius();
/// The least distance from the eye, metres, at which a 3D view shows such content.
double LeastDepth(const ShownExtent& extent);
/// A radius brought within those bounds.
double UsableRadius(double radius);
