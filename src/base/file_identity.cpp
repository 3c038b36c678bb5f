#include "base/file_identity.h"

#include <sys/stat.h>

FileIdentity IdentityOfFile(const char* name) {
    struct stat status;
    if (stat(name, &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return {1,
            static_cast<std::int64_t>(status.st_dev),
            static_cast<std::int64_t>(status.st_ino),
            static_cast<std::int64_t>(status.st_size),
            static_cast<std::int64_t>(status.st_mtim.tv_sec),
            static_cast<std::int64_t>(status.st_mtim.tv_nsec)};
}
