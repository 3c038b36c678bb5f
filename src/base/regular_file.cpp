#include "base/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::FILE* OpenRegularFile(const char* name, std::uint64_t& size) {
    const int descriptor = open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    std::FILE* file = nullptr;
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        file = fdopen(descriptor, "rb");
    if (!file) {
        close(descriptor);
        return nullptr;
    }
    size = static_cast<std::uint64_t>(status.st_size);
    return file;
}
