// Files that the user drops on the desktop window.
#pragma once

#include <string>

namespace gl {

// A file was dropped: from the desktop, or by a script.
void FileWasDropped(const std::string& path);
// The path of the file dropped first that nobody has taken yet; "" when there is none.
std::string TakeDroppedFile();

} // namespace gl
