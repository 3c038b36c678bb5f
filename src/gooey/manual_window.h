#pragma once

#include <string>

// A window of the program's own for manual pages, with their text and links.

/// The file of a page in the installation's manual.
std::string ManualFile(const std::string& page);

/// Shows a page in the window, which is opened if need be.
void ShowManualPage(const std::string& page);
