#pragma once

#include "files/primitives.h"
#include "store/records.h"

#include <cstdint>
#include <map>

/// The objects of a file that is being read, by Id. Of several with one Id the one read last counts. Not hashed: a file
/// could choose its numbers so that they all collide.
using ObjectsById = std::map<std::int32_t, Object*>;

/// Reads what follows a TagBranchList of the top level and hangs it under the scene's root.
void ReadSceneTree(FileCursor& file, const ObjectsById& objects);

/// Reads what follows a TagView and stores the view in its place. Views without a place, of the scene while merging,
/// and of an object when there is none are dropped.
void ReadView(FileCursor& file);
