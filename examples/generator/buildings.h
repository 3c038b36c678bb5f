#pragma once

#include "model_builder.h"

// The buildings of the village, each an object of its own with three levels of detail. They stand on z = 0 with their
// middle at the origin, the front towards -y.

Object* BuildCottage(const char* name, const Surface& walls, const Surface& roof, const char* door);
Object* BuildTownHouse(const char* name, const Surface& walls, const Surface& roof, const char* door);
Object* BuildBarn();
Object* BuildChurch();
