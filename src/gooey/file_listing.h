#pragma once

#include <string>
#include <vector>

// What a file selector shows of a directory.

struct FileEntry {
    std::string Name;
    bool IsFile;
};

struct FileListing {
    /// Directories before files, each by name whatever the case.
    std::vector<FileEntry> Entries;
    /// Why the directory could not be read; empty when it was.
    std::string Error;
};

/// Reads a directory ("" is the root): its directories, and the files whose names end with the extension or, with
/// `showBackups`, with the extension and ".bak". Names that begin with "." are left out.
FileListing ListFiles(const std::string& directory, const std::string& extension, bool showBackups);

/// The path of a name in a directory, the root being "" or "/".
std::string PathIn(const std::string& directory, const std::string& name);

/// A path as a user writes it, from a directory on: "~" is the home directory, "." and ".." and double slashes are
/// resolved. Without a slash at its end; the root is "".
std::string ResolvedPath(const std::string& directory, const std::string& typed);

bool IsDirectory(const std::string& path);
bool IsReadableFile(const std::string& path);
