#pragma once

#include <cstdint>
#include <cstdio>

/// Opens a file for reading and gives its size in bytes; null when it is none. A pipe or a device, for which one would
/// have to wait, is no file. The caller closes it.
std::FILE* OpenRegularFile(const char* name, std::uint64_t& size);
