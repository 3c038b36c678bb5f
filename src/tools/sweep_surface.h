#pragma once

struct Sweep;

// What a sweep's mesh gets when its places are known.

/// Facet normals, creases, and in smooth lighting the normals of the corners.
void SweepNormals(Sweep& sweep);
/// Texture coordinates: along the profile and along the path.
void SweepTexture(Sweep& sweep);
/// Caps, convex, counted among the polygons: of an open path the profile at both ends, of a closed one that lies in a
/// plane the ways of the ends of an open profile. What has no area is left out.
void SweepCaps(Sweep& sweep);
