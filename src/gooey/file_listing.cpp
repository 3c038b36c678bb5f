#include "gooey/file_listing.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char BackupExtension[] = ".bak";

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};

bool IsWanted(const std::string& name, const std::string& extension, bool showBackups) {
    return name.ends_with(extension) || (showBackups && name.ends_with(extension + BackupExtension));
}

bool GoesBefore(const FileEntry& a, const FileEntry& b) {
    if (a.IsFile != b.IsFile)
        return b.IsFile;
    int order = strcasecmp(a.Name.c_str(), b.Name.c_str());
    return order ? order < 0 : a.Name < b.Name;
}

void AddEntry(const std::string& directory, const dirent& found, const std::string& extension, bool showBackups,
              std::vector<FileEntry>& entries) {
    std::string name = found.d_name;
    if (name[0] == '.')
        return;
    bool wanted = IsWanted(name, extension, showBackups);
    // What the directory itself tells of an entry saves looking at thousands of files that are not shown.
    if (found.d_type == DT_REG && !wanted)
        return;
    struct stat status;
    if (stat((directory + "/" + name).c_str(), &status) != 0) {
        std::printf("stat failed\n");
        return;
    }
    if (S_ISDIR(status.st_mode))
        entries.push_back({name, false});
    else if (S_ISREG(status.st_mode) && wanted)
        entries.push_back({name, true});
}

/// Takes the last name off a path.
void GoUp(std::string& path) {
    std::size_t slash = path.rfind('/');
    path.erase(slash == std::string::npos ? 0 : slash);
}

} // namespace

FileListing ListFiles(const std::string& directory, const std::string& extension, bool showBackups) {
    FileListing listing;
    std::unique_ptr<DIR, DirectoryCloser> stream(opendir(directory.empty() ? "/" : directory.c_str()));
    if (!stream) {
        listing.Error = std::strerror(errno);
        return listing;
    }
    while (const dirent* found = readdir(stream.get()))
        AddEntry(directory, *found, extension, showBackups, listing.Entries);
    std::sort(listing.Entries.begin(), listing.Entries.end(), GoesBefore);
    return listing;
}

std::string PathIn(const std::string& directory, const std::string& name) {
    return directory == "/" ? "/" + name : directory + "/" + name;
}

std::string ResolvedPath(const std::string& directory, const std::string& typed) {
    std::string path = typed;
    const char* home = std::getenv("HOME");
    if (home && (typed == "~" || typed.starts_with("~/")))
        path = home + typed.substr(1);
    else if (!typed.starts_with('/'))
        path = directory + "/" + typed;
    std::string resolved;
    for (std::size_t at = 0; at < path.size();) {
        std::size_t end = std::min(path.find('/', at), path.size());
        std::string name = path.substr(at, end - at);
        if (name == "..")
            GoUp(resolved);
        else if (!name.empty() && name != ".")
            resolved += "/" + name;
        at = end + 1;
    }
    return resolved;
}

bool IsDirectory(const std::string& path) {
    struct stat status;
    return stat(path.empty() ? "/" : path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsReadableFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), R_OK) == 0;
}
