#pragma once

#include "store/curve_flattening.h"
#include "store/records.h"
#include "views/kept_recording.h"

#include <cstdint>
#include <vector>

// Surfaces made by a curve, the profile, that is carried along another one, the path, or turned about an axis: the
// settings of a sweep and the mesh that they make.

/// A quadrilateral of the surface: one segment of the profile along one segment of the path.
struct SweepCell {
    double Start[3];     // of the profile's point, at the path's point
    double End[3];       // of the same point of the profile, at the path's next point
    float U, V;          // texture coordinates of Start
    float Normal[3];     // unit; zero without area
    float Corners[4][3]; // normals at the corners, in the order of CellCorner
    std::uint8_t Done;
    std::uint8_t Crease; // SweepCrease bits
};

enum SweepCrease : std::uint8_t {
    PathCrease = 1,   // the surface has an edge across the path, where the cell starts
    ProfileCrease = 2 // it has one along the path, on the cell's first side
};

enum CellCorner { StartCorner = 0, NextStartCorner = 1, NextEndCorner = 2, EndCorner = 3 };

inline constexpr int MostSweepGridIndex = 23;
inline constexpr int LeastRevolveSides = 3, MostRevolveSides = 128;

struct Sweep {
    Elist Path;
    Elist Profile;
    int HasUp;
    double Up[3]; // normal of the grid on which the path was begun
    int HasNormal;
    double Normal[3]; // of the plane of the path, as it was last
    int PathCount, ProfileCount;
    int PolygonCount; // shown to the user
    int Remake;       // flag: the mesh is out of date
    int ReflectedEnd; // the path's last joint turned back
    int ApplyTexture, Sideways, InsideOut, DoubleSided, CapEnds;
    int Revolve;           // flag: the path is a circle
    int Planar;            // the path lies in a plane
    int Sides;             // of that circle
    float Stretch, Repeat; // of the texture
    /// ProfileCount rows of PathCount cells. The outermost belong to no part of the surface: it has the rows from 1 to
    /// RowsOf and the columns from 1 to ColumnsOf, and each row's Start is valid one row and one column further.
    std::vector<SweepCell> Mesh;
    WorkPoly* Caps; // owned
    int GridIndex;  // a square of the profile is GridSquare(GridIndex)
    /// The mesh as it was drawn last, and how; empty when it is out of date.
    KeptRecording Drawing;
    int DrawingForm;
    /// The points of the curves with one before the first and one or two after the last.
    std::vector<FlatPoint> PathPoints, ProfilePoints;
    double PathPlane[4];

    Sweep();
    ~Sweep();
    Sweep(const Sweep&) = delete;
    Sweep& operator=(const Sweep&) = delete;
};

/// The settings of a new sweep; both curves are emptied.
void InitialiseSweep(Sweep& sweep);

/// Makes the mesh anew if it is out of date.
void RemakeSweepMesh(Sweep& sweep);

/// The curves have changed, or a setting: the mesh will be made anew before it is used.
inline void SweepChanged(Sweep& sweep) {
    sweep.Remake = 1;
}

/// Gives back the memory of the mesh; the curves stay.
void FreeSweepMesh(Sweep& sweep);

inline bool HasMesh(const Sweep& sweep) {
    return !sweep.Mesh.empty();
}

/// The texture is put on: it is wanted, and there is one.
bool SweepIsTextured(const Sweep& sweep);

inline int RowsOf(const Sweep& sweep) {
    return sweep.ProfileCount - 3;
}

inline int ColumnsOf(const Sweep& sweep) {
    return sweep.PathCount - 3;
}

inline SweepCell& CellOf(Sweep& sweep, int row, int column) {
    return sweep.Mesh[static_cast<std::size_t>(row) * sweep.PathCount + column];
}

inline const SweepCell& CellOf(const Sweep& sweep, int row, int column) {
    return sweep.Mesh[static_cast<std::size_t>(row) * sweep.PathCount + column];
}

/// The path leads back to its beginning, as a circle does.
inline bool PathIsClosed(const Sweep& sweep) {
    return sweep.Revolve || sweep.Path.Closed;
}

/// The places of a cell's corners, in the order of CellCorner. `out` has 4 pointers.
inline void CornersOf(const Sweep& sweep, int row, int column, const double** out) {
    const SweepCell &cell = CellOf(sweep, row, column), &next = CellOf(sweep, row + 1, column);
    out[StartCorner] = cell.Start;
    out[NextStartCorner] = next.Start;
    out[NextEndCorner] = next.End;
    out[EndCorner] = cell.End;
}

/// Texture coordinates of a corner.
void TextureAtCorner(const Sweep& sweep, int row, int column, int corner, float* coordinates);
