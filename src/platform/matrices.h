// Matrices of the current window: row vectors multiply on the left (p' = p M), translations sit in row 3, and a new
// matrix is multiplied onto the current one from the left (new = m current), so that what is called last acts first on
// a vertex. Everything is kept in double precision.
#pragma once

namespace gl {

// Which matrix the calls below address. MSINGLE, the mode of a new window, has one matrix for everything, at first that
// of pixel coordinates; in the others vertices go through the viewing matrix, then the projection. Leaving MSINGLE
// makes its matrix the projection and the viewing matrix the identity, entering it multiplies the two: nothing moves.
enum MatrixMode { MSINGLE = 0, MPROJECTION = 1, MVIEWING = 2, MTEXTURE = 3 };

void mmode(int mode);
int getmmode();

void loadmatrix(const float (*matrix)[4]);
void loadmatrix(const double (*matrix)[4]);
void multmatrix(const float (*matrix)[4]);
void multmatrix(const double (*matrix)[4]);
void getmatrix(float (*matrix)[4]);
void getmatrix(double (*matrix)[4]);
// The same for 16 numbers in rows.
void loadmatrix(const float* matrix);
void loadmatrix(const double* matrix);
void multmatrix(const float* matrix);
void multmatrix(const double* matrix);
void getmatrix(float* matrix);
void getmatrix(double* matrix);

// A copy of the viewing matrix on its stack of 32; one more or one fewer is reported on standard error and ignored. In
// MPROJECTION and MTEXTURE nothing happens: these matrices have no stack.
void pushmatrix();
void popmatrix();

void translate(double x, double y, double z);
void scale(double x, double y, double z);
// About the axis 'x', 'y' or 'z', by degrees (rot) or tenths of degrees (rotate), counter-clockwise as the axis points
// at the viewer.
void rot(double degrees, char axis);
void rotate(int tenths, char axis);

// Projections. They replace the projection matrix in every mode but MSINGLE, where they replace the single matrix. The
// eye looks along -z; depth runs from -1 (near) to 1 (far) after the division.
// Field of view in tenths of degrees from bottom to top; aspect is width / height; distances are positive.
void perspective(int fieldOfView, double aspect, double nearDistance, double farDistance);
void ortho(double left, double right, double bottom, double top, double nearDistance, double farDistance);
void ortho2(double left, double right, double bottom, double top);

} // namespace gl
