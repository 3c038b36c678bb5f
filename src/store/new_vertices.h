#pragma once

#include "store/records.h"

// Temporary vertices of the tools: drawn by the views, but part of no object until a tool copies them into one.

/// Through Next and Prev, the newest first.
extern Vertex* NewVertices;
/// Flag: the newest is labelled with its coordinates.
extern int LabelLastNewVertex;

/// A vertex at the head of the list.
Vertex* AddNewVertex(double x, double y, double z);
/// Frees the newest; nothing when there is none.
void DeleteLastNewVertex();
/// Frees all and clears LabelLastNewVertex.
void DeleteAllNewVertices();
