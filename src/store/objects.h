#pragma once

#include "store/records.h"

// Adding and removing whole objects of the current file.

/// The first object without vertices and polygons whose name begins with "Unnamed", or null.
Object* FindUnusedObject();

/// An object with a copy of the name ("Unnamed" for null), at the head of the list and current. With `sort` the list is
/// then sorted by name; with `reuse` an unused object is deleted first, so that it is replaced.
Object* AddObject(const char* name, int sort, int reuse);

/// Releases an object with all that it owns, its snapshot included. It must be on no list.
void FreeObject(Object* object);

/// Takes an object off the file and releases it. A deleted current object is succeeded by a neighbour.
void DeleteObject(Object* object);

/// Takes an object from one file to the head of another file's list.
void MoveObject(Object* object, FileStruct& from, FileStruct& to);

void FreeAllObjects();

/// 1 when some object of the file has a vertex.
int AnythingInMemory();

/// 1 when the current object has a vertex.
int AnythingInObject();
