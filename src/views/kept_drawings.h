#pragma once

#include "store/records.h"
#include "views/polygon_forms.h"

#include <cstdint>

// Drawings of polygons kept in graphics memory, a few thousand polygons a piece. They are drawn again without a look at
// the polygons until something is said to have changed (store/appearance.h); the polygons are then looked through, and
// the pieces that do look different are recorded anew.

/// Draws the polygons of a sub-object, under the matrices and the state of this moment; outlines in the packed colour.
void DrawKept(const SubObject* subObject, PolygonForm form, std::uint32_t colour = 0);
/// The same for the selected polygons of an object.
void DrawKeptSelection(const Object* object, PolygonForm form, std::uint32_t colour = 0);

/// Looks whether what materials and textures stand for has changed since the last call; belongs before every drawing.
void NoteDefinitions();

/// Releases drawings that have not been wanted for a while when all of them together take much memory.
void LimitKeptDrawings();
/// Releases all drawings; they are made again when needed. Before the graphics layer ends, or to save memory.
void ReleaseKeptDrawings();

/// Flag: every drawing is compared with its polygons each time, and a difference that nobody told of is reported on the
/// standard error stream. Set in developer builds.
extern int CheckKeptDrawings;
/// How often that was found.
extern int StaleDrawingsFound;
/// How many pieces have been recorded so far.
extern int PiecesRecorded;
