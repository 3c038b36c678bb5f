#include "base/file_replacement.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// Hidden names must fit a directory entry whatever the length of the file's own name.
constexpr std::size_t LongestPartOfName = 200;

/// The file that a name stands for in the end, whether it exists or not.
fs::path FollowLinks(fs::path name) {
    constexpr int mostLinks = 40; // the system gives up there, too
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(name, error); ++i) {
        const fs::path target = fs::read_symlink(name, error);
        name = target.is_absolute() ? target : name.parent_path() / target;
    }
    return name;
}

fs::path DirectoryOf(const fs::path& name) {
    return name.has_parent_path() ? name.parent_path() : fs::path(".");
}

std::string HiddenNameOf(const fs::path& place, const std::string& distinction) {
    const std::string name = "." + place.filename().string().substr(0, LongestPartOfName) + distinction + ".saving";
    return DirectoryOf(place) / name;
}

/// Keeps errno through what is done after a failure.
class ErrnoScope {
  public:
    ErrnoScope() : Kept(errno) {}

    ~ErrnoScope() { errno = Kept; }

  private:
    int Kept;
};

/// Only then is a new name certain to be found after a power failure.
void SyncDirectory(const fs::path& directory) {
    const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

/// True for what a kill has left: nobody writes to it any more.
bool IsLeftOver(const char* name) {
    const int descriptor = open(name, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return false;
    const bool free = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    close(descriptor);
    return free;
}

int CreateLocked(const char* name) {
    if (IsLeftOver(name))
        unlink(name);
    const int descriptor = open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0)
        flock(descriptor, LOCK_EX | LOCK_NB);
    return descriptor;
}

/// From the start of one open file over another, which then ends there, onto the disk.
bool CopyOver(int from, int to) {
    char block[64 * 1024];
    off_t offset = 0;
    for (ssize_t count; (count = pread(from, block, sizeof block, offset)) != 0;) {
        if (count < 0)
            return false;
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = pwrite(to, block + done, static_cast<std::size_t>(count - done), offset + done);
            if (written < 0)
                return false;
            done += written;
        }
        offset += count;
    }
    return ftruncate(to, offset) == 0 && fsync(to) == 0;
}

/// An open file for the length of a scope.
class Descriptor {
  public:
    explicit Descriptor(int number) : Number(number) {}

    ~Descriptor() {
        const ErrnoScope keepErrno;
        if (Number >= 0)
            close(Number);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return Number >= 0; }

    operator int() const { return Number; }

  private:
    const int Number;
};

/// A new file in the directory for temporary files; its name is put in place of `name`, the file's own.
int CreateTemporary(std::string& name) {
    std::error_code error;
    const fs::path directory = fs::temp_directory_path(error);
    name = (error ? fs::path("/tmp") : directory) / ("Kirvo-" + name.substr(0, LongestPartOfName) + "-XXXXXX");
    return mkostemp(name.data(), O_CLOEXEC);
}

} // namespace

FileReplacement::FileReplacement(const char* name) : Place(FollowLinks(name)) {
    struct stat status;
    const bool exists = stat(Place.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        // A pipe must not make us wait for its reader.
        const int descriptor = open(Place.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
        File = descriptor < 0 ? nullptr : fdopen(descriptor, "w");
        return;
    }
    OldVersion = exists;
    if (exists && access(Place.c_str(), W_OK) != 0)
        return;
    if (OpenBeside()) {
        if (exists && !TakeOverPermissions())
            Fail();
        return;
    }
    const bool closedDirectory = errno == EACCES || errno == EPERM || errno == EROFS;
    if (!exists || !closedDirectory || !OpenElsewhere())
        Fail();
}

FileReplacement::~FileReplacement() {
    Fail();
}

bool FileReplacement::OpenBeside() {
    Hidden = HiddenNameOf(Place, "");
    int descriptor = CreateLocked(Hidden.c_str());
    if (descriptor < 0 && errno == EEXIST) {
        // Another program is saving the same file.
        Hidden = HiddenNameOf(Place, "." + std::to_string(getpid()));
        descriptor = CreateLocked(Hidden.c_str());
    }
    if (descriptor >= 0)
        File = fdopen(descriptor, "w");
    else
        Hidden.clear();
    return File != nullptr;
}

bool FileReplacement::OpenElsewhere() {
    const ErrnoScope keepErrno; // of the directory
    const Descriptor old(open(Place.c_str(), O_WRONLY | O_CLOEXEC));
    std::string name = fs::path(Place).filename();
    if (!old || (Elsewhere = CreateTemporary(name)) < 0)
        return false;
    unlink(name.c_str());
    const int second = dup(Elsewhere);
    File = second < 0 ? nullptr : fdopen(second, "w");
    return File != nullptr;
}

bool FileReplacement::WriteOver() {
    std::string copy = fs::path(Place).filename();
    const Descriptor place(open(Place.c_str(), O_RDWR | O_CLOEXEC)), kept(place ? CreateTemporary(copy) : -1);
    if (!kept)
        return false;
    // A copy that is needed is left for the user.
    const bool copied = CopyOver(place, kept), written = copied && CopyOver(Elsewhere, place);
    const ErrnoScope keepErrno;
    if (written || !copied || CopyOver(kept, place))
        unlink(copy.c_str());
    return written;
}

bool FileReplacement::TakeOverPermissions() const {
    struct stat status;
    if (stat(Place.c_str(), &status) != 0)
        return true;
    // Only some users may give files away; the rights of another owner's program must not come with it.
    const bool sameOwner = fchown(fileno(File), status.st_uid, status.st_gid) == 0;
    constexpr mode_t rightsOfOwner = S_ISUID | S_ISGID;
    return fchmod(fileno(File), status.st_mode & 07777 & ~(sameOwner ? 0U : rightsOfOwner)) == 0;
}

int FileReplacement::Finish() {
    const bool written = std::fflush(File) == 0 && !std::ferror(File) && (Hidden.empty() || fsync(fileno(File)) == 0);
    if (!written)
        return Fail();
    return std::fclose(std::exchange(File, nullptr)) == 0 || Fail();
}

int FileReplacement::KeepOldVersion(const std::string& suffix) {
    if (Elsewhere >= 0) {
        const Descriptor old(open(Place.c_str(), O_RDONLY | O_CLOEXEC));
        const Descriptor kept(open((Place + suffix).c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
        return old && kept && CopyOver(old, kept);
    }
    if (Hidden.empty() || !OldVersion)
        return 1;
    const std::string kept = Place + suffix, second = Hidden + suffix;
    unlink(second.c_str());
    if (link(Place.c_str(), second.c_str()) == 0) {
        const bool renamed = std::rename(second.c_str(), kept.c_str()) == 0;
        // It is left over when renaming failed, and when both were names of one file already.
        const ErrnoScope keepErrno;
        unlink(second.c_str());
        return renamed;
    }
    // Not every file system can give a file two names.
    if (std::rename(Place.c_str(), kept.c_str()) != 0)
        return 0;
    Moved = kept;
    return 1;
}

int FileReplacement::KeepOldVersionAs(const std::string& name) {
    if (Elsewhere >= 0) {
        errno = EACCES;
        return 0;
    }
    if (Hidden.empty() || !OldVersion || link(Place.c_str(), name.c_str()) == 0)
        return 1;
    if (errno == EEXIST || renameat2(AT_FDCWD, Place.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) != 0)
        return 0;
    Moved = name;
    return 1;
}

int FileReplacement::PutInPlace() {
    if (Elsewhere >= 0)
        return WriteOver() || Fail();
    if (Hidden.empty())
        return 1;
    if (std::rename(Hidden.c_str(), Place.c_str()) != 0)
        return Fail();
    Hidden.clear();
    Moved.clear();
    SyncDirectory(DirectoryOf(Place));
    return 1;
}

/// Drops the new version; what stood there is there again. False, for the caller to pass on.
bool FileReplacement::Fail() {
    const ErrnoScope keepErrno;
    if (File)
        std::fclose(std::exchange(File, nullptr));
    if (Elsewhere >= 0)
        close(std::exchange(Elsewhere, -1));
    if (!Moved.empty())
        std::rename(Moved.c_str(), Place.c_str());
    Moved.clear();
    if (!Hidden.empty())
        unlink(Hidden.c_str());
    Hidden.clear();
    return false;
}

void RemoveUnfinishedReplacement(const char* name) {
    const std::string hidden = HiddenNameOf(FollowLinks(name), "");
    if (IsLeftOver(hidden.c_str()))
        unlink(hidden.c_str());
}
