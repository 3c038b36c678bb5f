#include "base/file_replacement.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Hidden names must fit a directory entry whatever the length of the file's own name.
constexpr std::size_t LongestPartOfName = 200;

constexpr char HiddenEnding[] = ".saving";

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
    const std::string name = "." + place.filename().string().substr(0, LongestPartOfName) + distinction + HiddenEnding;
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

int CreateLocked(const char* name, mode_t mode) {
    if (IsLeftOver(name))
        unlink(name);
    const int descriptor = open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
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

FileReplacement::FileReplacement(const char* name, const char* permissionsOf) : Place(FollowLinks(name)) {
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
    const bool own = permissionsOf == name;
    // Nobody may open it before it has its permissions: what is read through it later would not ask again.
    if (OpenBeside(own && !exists ? 0666 : 0600)) {
        if (own ? exists && !TakeOverPermissions() : !TakePermissionsOf(permissionsOf))
            Fail();
        return;
    }
    const bool closedDirectory = errno == EACCES || errno == EPERM || errno == EROFS;
    if (!exists || !closedDirectory || !OpenElsewhere())
        Fail();
}

FileReplacement::~FileReplacement() {
    Fail();
    if (Held >= 0)
        close(Held);
}

bool FileReplacement::OpenBeside(unsigned mode) {
    Hidden = HiddenNameOf(Place, "");
    int descriptor = CreateLocked(Hidden.c_str(), mode);
    if (descriptor < 0 && errno == EEXIST) {
        // Another program is saving the same file.
        Hidden = HiddenNameOf(Place, "." + std::to_string(getpid()));
        descriptor = CreateLocked(Hidden.c_str(), mode);
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

bool FileReplacement::TakePermissionsOf(const char* name) const {
    struct stat status;
    // A model without a name gives its directory.
    if (stat(name, &status) != 0 || !S_ISREG(status.st_mode))
        return true;
    constexpr auto unchanged = static_cast<uid_t>(-1);
    const bool sameGroup = fchown(fileno(File), unchanged, status.st_gid) == 0;
    const mode_t others = status.st_mode & (sameGroup ? S_IRWXG | S_IRWXO : S_IRWXO);
    return fchmod(fileno(File), S_IRUSR | S_IWUSR | others) == 0;
}

int FileReplacement::Finish() {
    const bool written = std::fflush(File) == 0 && !std::ferror(File) && (Hidden.empty() || fsync(fileno(File)) == 0);
    if (!written)
        return Fail();
    // The lock goes on for as long as any descriptor of the file is open.
    if (!Hidden.empty())
        Held = fcntl(fileno(File), F_DUPFD_CLOEXEC, 0);
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

namespace {

/// Whether a name is that of a new version, or the second name of an old one, of a file with that ending.
bool IsHiddenNameOf(std::string_view name, std::string_view ending, bool& ofOldVersion) {
    const std::size_t end = name.rfind(HiddenEnding);
    if (!name.starts_with('.') || end == std::string_view::npos)
        return false;
    const std::string_view suffix = name.substr(end + std::string_view(HiddenEnding).size());
    ofOldVersion = !suffix.empty();
    if (ofOldVersion && !suffix.ends_with(".bak"))
        return false;
    std::string_view file = name.substr(1, end - 1);
    // The number of the program that made it, if there were two.
    const std::size_t point = file.rfind('.');
    if (point != std::string_view::npos && point + 1 < file.size() &&
        file.find_first_not_of("0123456789", point + 1) == std::string_view::npos)
        file = file.substr(0, point);
    return file.ends_with(ending);
}

} // namespace

void RemoveUnfinishedReplacements(const std::string& directory, const std::string& ending) {
    std::error_code error;
    std::vector<std::string> stale;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error)) {
        bool ofOldVersion = false;
        struct stat status;
        if (!IsHiddenNameOf(entry->path().filename().string(), ending, ofOldVersion) ||
            lstat(entry->path().c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != geteuid())
            continue;
        // The last name of an old version would be all that is left of it.
        if (ofOldVersion ? status.st_nlink > 1 : IsLeftOver(entry->path().c_str()))
            stale.push_back(entry->path());
    }
    for (const std::string& name : stale)
        unlink(name.c_str());
}
