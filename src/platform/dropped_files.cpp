#include "platform/dropped_files.h"

#include <deque>

namespace gl {

namespace {

std::deque<std::string> Dropped;

} // namespace

void FileWasDropped(const std::string& path) {
    Dropped.push_back(path);
}

std::string TakeDroppedFile() {
    if (Dropped.empty())
        return "";
    std::string path = Dropped.front();
    Dropped.pop_front();
    return path;
}

} // namespace gl
