#pragma once

#include "geometry/matrices.h"
#include "store/records.h"

// Vertices of one object that are dragged: placed again and again, all by one matrix each time, while nothing else of
// the object changes. Meanwhile derived data stays as it was when the drag began. What is kept of the object's look is
// shown through the matrix, and only what holds other things as well is made anew.

struct Motion {
    const Object* Of;
    /// The vertices, through NextInGroup.
    Vertex* First;
    /// From where they were when it began to where they are.
    Matrix Way;
    /// Which motion of the run it is, and which step; no two have the same.
    unsigned Number, Step;
};

/// Null while nothing is in motion.
const Motion* CurrentMotion();

/// The vertices have been placed anew, where `to` takes their SavedPosition. The first step begins a motion of the
/// current object, which must have been clean when they were where `from` takes them. 0, and any motion is over, when
/// what is kept cannot be taken along that way: one that mirrors or flattens. The caller then clears the object's flags
/// as for any other change.
int StepMotion(Vertex* first, const Matrix& from, const Matrix& to);
/// The caller clears the object's flags.
void EndMotion();

/// Sets the normals of all polygons that the motion changes, once a step.
void MakeNormalsInMotion();

/// How much of a polygon, its sub-polygons not included, is in motion.
enum class Moves { Nothing, Something, Everything };
/// Marks vertices for HowMuchMoves: belongs before every row of questions.
void MarkVerticesInMotion();
Moves HowMuchMoves(const Polygon* polygon);
