#pragma once

#include "store/view_record.h"

// How a view looks at a model before the user turns it, and how it is fitted to the model.

/// The 3D view among the directions of 2D views: 0 Top, 1 Bottom, 2 Left, 3 Right, 4 Front, 5 Back.
inline constexpr int Direction3D = 61;

/// The direction that each viewport starts with.
extern const int DefaultViewDir[ViewportLimit];

/// The current window's aspect decides the projections made here.
void MakeDefault3dView(View* view, double radius);
void MakeDefault2dView(View* view, double radius, int direction);
/// Fits the view to a sphere of this radius about the origin; its rotation stays.
void BoxView(View* view, double radius);
/// The distance of the eye from which a 3D view shows a sphere of this radius, metres.
double BoxDistance(const View& view, double radius);
/// Computes Projection for a model of this size in the current window, and clears Stale.
void SussViewProjection(View* view, double size);

/// Make the scene's or the current object's defaults that are not valid, with a grid that fits. What is far too small
/// to be seen from where all about the origin is in sight is looked at from close by instead.
void MakeDefaultSceneViews();
void MakeDefaultObjectViews();

/// Copy a default, made first if need be, into the view. `direction` 0 to 5 or Direction3D.
void SetDefaultSceneView(View* view, int direction);
void SetDefaultObjectView(View* view, int direction);

// Views that come from files may hold any numbers.

/// 0 for a view that must be made from the defaults before it is drawn: one that is not set up, that has no such
/// direction, or whose matrix is not finite or flattens space.
int ViewIsUsable(const View& view);
/// Replaces what else of a view cannot be drawn with by what a default has: its grid, its zoom, its centre of rotation.
void RepairView(View* view);

/// Makes the view the default of its kind.
void RememberView(const View* view);
