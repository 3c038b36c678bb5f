#pragma once

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

/// A file in memory, under a name by which it can be opened.
class MemoryFile {
  public:
    MemoryFile() : Descriptor(memfd_create("input", 0)), Name("/proc/self/fd/" + std::to_string(Descriptor)) {
        if (Descriptor < 0)
            std::abort();
    }

    const char* Fill(const void* data, std::size_t size) {
        if (ftruncate(Descriptor, 0) != 0 || pwrite(Descriptor, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
        return Name.c_str();
    }

  private:
    int Descriptor;
    std::string Name;
};
