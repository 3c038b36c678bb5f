#pragma once

#include "files/file_check.h"
#include "files/inspection.h"

#include <string>
#include <vector>

// What an inspection found, as text for people and as JSON for programs. Text of the files themselves is shown with its
// control characters replaced, so that it cannot play tricks on a terminal; in JSON, bytes that are no UTF-8 are.

std::string ModelAsText(const LoadReport& report, const ModelSummary& model);
std::string ModelAsJson(const LoadReport& report, const ModelSummary& model);

std::string ImageAsText(const std::string& path, const ImageSummary& image);
std::string ImageAsJson(const std::string& path, const ImageSummary& image);

std::string FindingsAsText(const std::string& path, const std::vector<Finding>& findings);
std::string FindingsAsJson(const std::string& path, const std::vector<Finding>& findings);

/// The text with every control character replaced by a question mark.
std::string Printable(std::string text);
