#pragma once

#include <cstdint>

/// What tells one file, and one state of it, from another.
struct FileIdentity {
    /// 0: there is no plain file of that name; the rest is 0 then.
    std::int64_t There = 0;
    std::int64_t Device = 0, Inode = 0, Size = 0;
    /// Of the last change of its contents.
    std::int64_t Seconds = 0, Nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// The file that a name leads to now; links are followed.
FileIdentity IdentityOfFile(const char* name);
