#include "base/trusted_places.h"

#include "base/directories.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool AreTheSame(const std::string& a, const std::string& b) {
    struct stat first, second;
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

bool UserChoseInstallation() {
    const char* named = std::getenv("KIRVOHOME");
    return (named && *named && AreTheSame(named, KirvoDir)) || AreTheSame(DirectoryOfRunningProgram(), KirvoDir);
}

} // namespace

std::string DirectoryOfRunningProgram() {
    char path[MaxFileName];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length <= 0)
        return "";
    const std::string program(path, static_cast<std::size_t>(length));
    return program.substr(0, program.rfind('/'));
}

std::string WhyOthersMayChange(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return std::strerror(errno);
    if (status.st_uid != 0 && status.st_uid != geteuid())
        return "belongs to another user";
    return status.st_mode & (S_IWGRP | S_IWOTH) ? "can be written by others" : "";
}

bool InstallationIsTrusted(const std::string& place, std::string* reason) {
    if (UserChoseInstallation())
        return true;
    std::string path = KirvoDir;
    for (std::size_t from = 0;;) {
        if (const std::string why = WhyOthersMayChange(path); !why.empty()) {
            if (reason)
                *reason = path + " " + why;
            return false;
        }
        if (from >= place.size())
            return true;
        const std::size_t slash = std::min(place.find('/', from), place.size());
        path += "/" + place.substr(from, slash - from);
        from = slash + 1;
    }
}
