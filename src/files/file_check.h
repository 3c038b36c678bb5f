#pragma once

#include "files/inspection.h"

#include <string>
#include <vector>

/// Something worth saying about a file.
struct Finding {
    bool Problem; // else a note, with which all may still be well
    std::string Text;
};

/// Everything that is wrong with a model file that was loaded, or that could not be, and what its maker may want to
/// know. Reads all its images. `model` is not looked at when the file could not be loaded.
std::vector<Finding> FindProblems(const LoadReport& report, const ModelSummary& model);

/// Everything that is wrong with an image file as a texture. Reads it.
std::vector<Finding> FindImageProblems(const std::string& path, const ImageSummary& image);
