#pragma once

#include <cstdio>
#include <string>

/// A new version of a file, which takes the place of the old one in a single step once all of it is on the disk: after
/// a failure or a kill at any moment the old one, whole, is what is found there. It is written beside its place under a
/// hidden name, which the next attempt uses again. Links are followed: the file that they lead to is replaced, not
/// they; owner and permissions stay. What is no plain file (a device, a pipe) is written in place.
///
/// Where the directory takes no new files but the old version may be written, that is written over at the end, a copy
/// of it being kept in the directory for temporary files until the new one is on the disk.
class FileReplacement {
  public:
    /// Stream() is null when nothing can be written there, or the old version may not be written; errno then says why.
    explicit FileReplacement(const char* name) : FileReplacement(name, name) {}

    /// With the permissions of another file: its group's only where they can be given to that group. When there is no
    /// such file only the owner may read it. The owner may always write it.
    FileReplacement(const char* name, const char* permissionsOf);
    /// Without Commit or PutInPlace nothing has happened.
    ~FileReplacement();

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    std::FILE* Stream() const { return File; }

    /// Whether there is an old version that would be lost.
    bool Replaces() const { return OldVersion; }

    /// Puts the new version into its place. 0, with errno set, when some of it could not be written.
    int Commit() { return Finish() && PutInPlace(); }

    // The same in two steps, each 0 with errno set when it fails; a backup may be made between them.

    /// Writes what is left and waits until the disk has it.
    int Finish();
    /// Keeps the old version under its name with a suffix, too, replacing what is there.
    int KeepOldVersion(const std::string& suffix);
    /// The same under a whole name that no file has: replaces nothing, then errno is EEXIST. Not where the directory
    /// takes no new files.
    int KeepOldVersionAs(const std::string& name);
    int PutInPlace();

  private:
    bool Fail();
    bool OpenBeside(unsigned mode);
    bool OpenElsewhere();
    bool WriteOver();
    bool TakeOverPermissions() const;
    bool TakePermissionsOf(const char* name) const;

    std::string Place;  // links followed
    std::string Hidden; // the new version's name; empty when writing in place
    std::string Moved;  // where the old version is while it cannot be in both places
    std::FILE* File = nullptr;
    int Held = -1;      // keeps the new version locked until it is in its place
    int Elsewhere = -1; // a file without a name that holds the new version
    bool OldVersion = false;
};

/// Removes what a kill has left of a replacement of the file of that name.
void RemoveUnfinishedReplacement(const char* name);

/// Removes what kills have left of replacements of files with that ending in a directory: hidden files of the
/// program's own making, of this user, that no program has open for writing.
void RemoveUnfinishedReplacements(const std::string& directory, const std::string& ending);
