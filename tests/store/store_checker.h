#pragma once

#include "store/records.h"

#include <string>

/// Checks every rule of the store over a whole file, on its own and slowly: membership of every list both ways,
/// ownership, no released record in reach, cached data where its flags say that it is valid. Returns what is wrong, or
/// an empty text.
std::string CheckFile(const FileStruct& file);
