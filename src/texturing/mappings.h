#pragma once

#include "geometry/matrices.h"
#include "store/records.h"

// Formulas from places of corners to texture coordinates. Each gives its polygons the current texture and material as
// well, and has their coordinates come from the corners. Nothing is told to views here: callers do that once for all
// polygons (store/appearance.h).

/// What a polygon gets beside its coordinates: the current texture, as what it is drawn with, and the current material.
void GiveTexture(Polygon* polygon);

/// Sets a corner's coordinates. What is no number counts as 0, what is out of all bounds as those bounds.
void SetTexCoord(PolygonBead* bead, double s, double t);

/// Width of the current texture's image divided by its height; 1 without a texture.
double CurrentAspect();

/// The affine map of a frame of three points: the first has the coordinates (0, 0), the second (1, 0), the third
/// (0, 1), seen along the z axis of the space that `toFrame` leads to; depth does not count.
struct ThreePointMap {
    double Origin[2], ToS[2], ToT[2];

    /// 0, the map being useless, when the points lie in one line as seen along z.
    int Make(const double (&points)[3][3], const Matrix& toFrame);

    double S(double x, double y) const { return (x - Origin[0]) * ToS[0] + (y - Origin[1]) * ToS[1]; }

    double T(double x, double y) const { return (x - Origin[0]) * ToT[0] + (y - Origin[1]) * ToT[1]; }
};

void MapThreePoints(Polygon* polygon, const ThreePointMap& map, const Matrix& toFrame);

/// A cylinder along the z axis of the space that ToAxis leads to.
struct CylinderMap {
    Matrix ToAxis;
    /// One grid square, metres.
    double Square;
    /// How often the texture goes around; how many squares high it is.
    double Repeat, Stretch;
};

/// A polygon that lies across the seam, where the angle jumps, goes on beyond it.
void MapCylinder(Polygon* polygon, const CylinderMap& map);

/// A projection along the z axis of the space that `toFrame` leads to. The texture is `1 / scale` wide, and as high as
/// its proportions want.
void MapPlanar(Polygon* polygon, const Matrix& toFrame, double scale);
/// The same along that axis which the polygon faces most. Needs valid normals.
void MapCubic(Polygon* polygon, const Matrix& toFrame, double scale);

/// The texture once over a quadrilateral, turned by so many quarters; the polygon's flags stay as they are.
void PaintQuad(Polygon* polygon, int quarters);
/// Texture coordinates of the corners of a square that shows a whole texture: short of 1, where it begins again.
inline constexpr float TextureSquare[4][2] = {{0, 0}, {0.99F, 0}, {0.99F, 0.99F}, {0, 0.99F}};

/// The texture once over the polygon's extent in its plane. Needs valid normals.
void StretchOverPolygon(Polygon* polygon);

/// How a texture runs along a strip of quadrilaterals.
struct StripMap {
    /// Coordinates at both sides of the strip.
    float U0 = 0, U1 = 0.99F;
    float Stretch = 1;
    /// Flag: across the strip instead of along it.
    int Sideways = 0;
};

/// Maps the strip that is selected (interaction/quad_strips.h): along it by the distance between the middles of the
/// edges where it enters and leaves each polygon, in the proportions of the texture at the first edge.
void MapStrip(const StripMap& map);
