#pragma once

struct SphereMesh;

// Spheres drawn again and again, as a preview or as a sample of a material: their meshes are kept.

/// How a sphere is drawn: one of the first four, and any of the others.
enum SphereFlag {
    SphereSmooth = 0,
    SphereFaceted = 1,
    SphereWire = 2, // in the current colour
    SphereHidden = 3,
    SphereStyles = 3, // the bits of those four
    SphereDome = 4,   // the part towards +z only
    SphereFlat = 8,   // without depth: z stays 0
    SphereTextureCoordinates = 16,
    SphereZUp = 32 // the poles lie on z, as models do, rather than on y
};

/// Forgets all kept meshes: at start-up, and after a use that is not going to come again.
void InitSpheres();
void FreeSpheres();

/// Number of triangles of a sphere or dome of that depth.
long SpherePolygons(int flags, int depth);

/// Draws a sphere into the current window with the material, texture and colour that are bound. A depth below 1 means
/// 5, one above 32 means 32.
void DrawSphere(float x, float y, float z, float radius, int flags, int depth);

/// The mesh for these flags and that depth, kept until five others have been wanted.
const SphereMesh& KeptSphereMesh(int flags, int depth);
