#pragma once

#include "model.h"

namespace converters {

/// Reads a file of another format. Images that it holds inside itself are written to `directory`/textures. Gives why
/// that failed, nothing on success.
std::string ImportFile(const std::string& path, const std::string& directory, Model& model);

} // namespace converters
