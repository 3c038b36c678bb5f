// Vertices on their way into batches: the current attributes, the way to eye coordinates, and lines and triangles made
// of vertices already there. For the layer's own modules.
#pragma once

#include <cmath>
#include <vector>

#include "platform/batch.h"
#include "platform/drawing_state.h"

namespace gl {

// What the next vertex takes besides its position, and how its position gets to eye coordinates.
struct VertexSource {
    Vertex attributes = {};     // the position is unused
    int16_t slot = -1;          // of the bound material in the pending batch, -1 when none
    bool viewingChanged = true; // the members below are out of date
    bool affine = true;         // w stays 1
    double viewing[16] = {};
    float normals[9] = {};
};

extern VertexSource Source;

// Takes the attributes from the drawing state again: a colour, a binding or a mode has changed, or a batch was sent.
void RefreshVertexAttributes();
// Brings the matrices up to date.
void RefreshViewing();
// Takes the state's normal through the viewing matrix.
void RefreshNormal();

// What normals are multiplied by, 9 numbers in rows: the cofactors of the upper 3 x 3 part of the viewing matrix, which
// point the right way for any scaling.
void NormalMatrix(const Matrix4& viewing, float* rows);

// A position in eye coordinates; RefreshViewing has been called since the matrices changed.
inline void ToEye(double x, double y, double z, double w, float* eye) {
    const double* m = Source.viewing;
    double ex = x * m[0] + y * m[4] + z * m[8] + w * m[12];
    double ey = x * m[1] + y * m[5] + z * m[9] + w * m[13];
    double ez = x * m[2] + y * m[6] + z * m[10] + w * m[14];
    if (!Source.affine || w != 1) {
        const double ew = x * m[3] + y * m[7] + z * m[11] + w * m[15];
        const double factor = ew != 0 ? 1 / ew : 1;
        ex *= factor;
        ey *= factor;
        ez *= factor;
    }
    eye[0] = static_cast<float>(ex);
    eye[1] = static_cast<float>(ey);
    eye[2] = static_cast<float>(ez);
}

// A position in model coordinates in the unit cube of the viewport (-1 to 1 each way); false when it is behind the eye.
bool ToUnitCube(const double* position, double* unit);

// The pixels (screen pixels of the viewport) that a unit of eye coordinates takes across and up in a projection made by
// ortho2.
void PixelsOfUnit(double* across, double* up);

// Adds triangles by indices into `vertices`; room for all of them is made by sending pieces.
void AddTriangles(const Vertex* vertices, int count, const int* indices, int indexCount);
void AddQuad(const Vertex* corners);

// What lines and points become in the present state.
Shape LineShape();
Shape PointShape();
// Adds a line through vertices in eye coordinates, or points there, after BeginShape of the shape above.
void AddLine(const Vertex* vertices, int count, bool closed);
void AddPoints(const Vertex* vertices, int count);

} // namespace gl
