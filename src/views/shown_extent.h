#pragma once

/// The box of what a view shows, model space, and the radius about the origin that its projection is for; metres.
struct ShownExtent {
    const double *Min, *Max;
    double Radius;
};

ShownExtent SceneBox();
ShownExtent ObjectBox();

struct ExtentSphere {
    double Centre[3];
    double Radius;
};

/// A tenth to spare, as in the radius of objects.
inline constexpr double RadiusSpare = 1.1;

/// Around the box. One that is not finite counts as all there is about the origin.
ExtentSphere SphereAround(const ShownExtent& extent);

/// Whether the box has a size, but one of few pixels in views of all the sphere about the origin.
bool BoxIsLostFromAfar(const ShownExtent& extent);
