#pragma once

#include "store/records.h"

#include <string>

/// All that a user would miss of a model, one line a record: objects with their vertices, polygons and levels of
/// detail, the scene and the materials. Views, selections, display flags and derived data are left out.
std::string ModelAsText(const FileStruct& file);
