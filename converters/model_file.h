#pragma once

#include "model.h"

namespace converters {

/// Reads a model file of version 3.02 or newer. Gives why that failed, nothing on success.
std::string ReadModelFile(const std::string& path, Model& model);

/// Writes one of the current version; textures below `directory` are named as seen from there.
std::string WriteModelFile(const std::string& path, const Model& model, const std::string& directory);

} // namespace converters
