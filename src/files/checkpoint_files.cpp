#include "files/checkpoint_files.h"

#include "base/directories.h"
#include "base/file_names.h"
#include "base/file_replacement.h"
#include "files/file_contents.h"
#include "files/writer.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int MostPrograms = 16;

/// More than the longest information: two names and some numbers.
constexpr std::size_t MostInformation = 2 * MaxFileName + 256;

/// Begins the third line of an information file.
constexpr std::string_view ThirdLineStart = "Kirvo ";

// Names. Number 1 has no suffix.

std::string HomeName(const char* name, int number, const char* ending) {
    return std::string(HomeDir) + "/" + name + (number == 1 ? "" : "-" + std::to_string(number)) + ending;
}

std::string ModelName(int number) {
    return HomeName("CheckPoint", number, KirvoExtension);
}

std::string InformationName(int number) {
    return HomeName(".kirvo_checkpoint_info", number, "");
}

/// The information of a checkpoint that is just being put in its place.
std::string NextInformationName(int number) {
    return HomeName(".kirvo_checkpoint_info", number, ".next");
}

std::string LockName(int number) {
    return HomeName(".kirvo_checkpoint_lock", number, "");
}

bool Exists(const std::string& name) {
    return access(name.c_str(), F_OK) == 0;
}

// Locks

/// The files that this program uses: their number, 0 for none, and the descriptor of their lock; -1 where the file
/// system has no locks.
struct Taken {
    int Number = 0;
    int Lock = -1;
};

Taken Files;

/// Whether a lock file is still the one that the name stands for: its owner may just have removed it.
bool IsStill(int descriptor, const std::string& name) {
    struct stat held, named;
    return fstat(descriptor, &held) == 0 && stat(name.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
           held.st_dev == named.st_dev;
}

bool Take(int number, Taken& taken) {
    const std::string name = LockName(number);
    for (;;) {
        const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        const bool locked = descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        if (!locked && descriptor >= 0 && errno == EWOULDBLOCK) {
            close(descriptor);
            return false;
        }
        if (!locked || IsStill(descriptor, name)) {
            taken = {number, descriptor};
            return true;
        }
        close(descriptor);
    }
}

void Release(Taken& taken) {
    if (taken.Lock >= 0) {
        unlink(LockName(taken.Number).c_str());
        close(taken.Lock);
    }
    taken = {};
}

// Information

/// What tells one checkpoint from another, also after it was renamed.
struct Identity {
    long long Size, Seconds, Nanoseconds;

    bool operator==(const Identity&) const = default;
};

Identity IdentityOf(const struct stat& status) {
    return {static_cast<long long>(status.st_size), static_cast<long long>(status.st_mtim.tv_sec),
            static_cast<long long>(status.st_mtim.tv_nsec)};
}

struct Information {
    CheckpointOrigin Origin;
    Identity Checkpoint{-1, 0, 0};
};

std::string TextOf(const Information& information) {
    const auto& [origin, checkpoint] = information;
    std::string text = origin.Path + "\n" + origin.Name + "\n" + std::string(ThirdLineStart);
    std::vector<long long> numbers = {static_cast<long long>(origin.Path.size()),
                                      static_cast<long long>(origin.Name.size()), checkpoint.Size, checkpoint.Seconds,
                                      checkpoint.Nanoseconds};
    if (const auto& known = origin.Known)
        numbers.insert(numbers.end(),
                       {known->There, known->Device, known->Inode, known->Size, known->Seconds, known->Nanoseconds});
    for (const long long number : numbers)
        text += std::to_string(number) + " ";
    text.back() = '\n';
    return text;
}

/// How many numbers a third line has at least, and with the file that was known.
constexpr std::size_t FewestNumbers = 5, AllNumbers = 11;

/// Reads a third line's numbers. False when it is none.
bool ReadNumbers(std::string_view line, std::vector<long long>& numbers) {
    if (!line.starts_with(ThirdLineStart))
        return false;
    line.remove_prefix(ThirdLineStart.size());
    long long number = 0;
    while (numbers.size() < AllNumbers) {
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
        if (error != std::errc())
            break;
        numbers.push_back(number);
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
        if (!line.empty())
            line.remove_prefix(1);
    }
    return numbers.size() >= FewestNumbers && numbers[0] >= 0 && numbers[1] >= 0;
}

/// With the third line names are taken by their lengths, whatever they consist of.
bool ParseWithThirdLine(std::string_view text, Information& information) {
    const std::size_t start = text.size() < 2 ? std::string_view::npos : text.rfind('\n', text.size() - 2);
    std::vector<long long> numbers;
    if (start == std::string_view::npos || !ReadNumbers(text.substr(start + 1), numbers))
        return false;
    const auto pathLength = static_cast<std::size_t>(numbers[0]), nameLength = static_cast<std::size_t>(numbers[1]);
    if (pathLength > start || nameLength > start || pathLength + nameLength + 1 != start)
        return false;
    information.Origin = {std::string(text.substr(0, pathLength)), std::string(text.substr(pathLength + 1, nameLength)),
                          std::nullopt};
    if (numbers.size() == AllNumbers)
        information.Origin.Known = {numbers[5], numbers[6], numbers[7], numbers[8], numbers[9], numbers[10]};
    information.Checkpoint = {numbers[2], numbers[3], numbers[4]};
    return true;
}

std::string_view TakeUpTo(std::string_view& text, std::string_view ends) {
    const std::size_t end = std::min(text.find_first_of(ends), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(text.find_first_not_of(ends, end), text.size()));
    return taken;
}

/// As older programs wrote it: two lines; or two words.
bool ParseLines(std::string_view text, Information& information) {
    std::string_view rest = text;
    std::string_view path = TakeUpTo(rest, "\r\n"), name = TakeUpTo(rest, "\r\n");
    if (name.empty()) {
        rest = path;
        path = TakeUpTo(rest, " \t");
        name = TakeUpTo(rest, " \t");
    }
    if (name.empty())
        return false;
    information.Origin = {std::string(path), std::string(name)};
    return true;
}

bool ReadInformation(const std::string& name, Information& information) {
    const FileContents contents(name.c_str(), MostInformation);
    const std::string_view text(reinterpret_cast<const char*>(contents.Bytes()), contents.Size());
    return ParseWithThirdLine(text, information) || ParseLines(text, information);
}

bool WriteInformation(const std::string& name, const Information& information) {
    FileReplacement file(name.c_str(), "");
    return file.Stream() && std::fputs(TextOf(information).c_str(), file.Stream()) >= 0 && file.Commit();
}

} // namespace

int TakeCheckpointFiles() {
    if (Files.Number)
        return 1;
    for (int number = 1; number <= MostPrograms; ++number) {
        // Of the files beyond the first free ones only those count that an ended program has left.
        if (Files.Number && !Exists(ModelName(number)))
            continue;
        Taken taken;
        if (!Take(number, taken))
            continue;
        Release(Files);
        Files = taken;
        if (Exists(ModelName(number)))
            break;
    }
    return Files.Number != 0;
}

void GiveBackCheckpointFiles() {
    Release(Files);
}

std::string CheckpointName() {
    return Files.Number ? ModelName(Files.Number) : "";
}

int CheckpointExists() {
    return Files.Number && access(CheckpointName().c_str(), R_OK) == 0;
}

int ReadCheckpointOrigin(CheckpointOrigin& origin) {
    Information information, next;
    const bool found = ReadInformation(InformationName(Files.Number), information);
    struct stat status;
    // A kill may have come between the renaming of the one file and of the other.
    if (ReadInformation(NextInformationName(Files.Number), next) && stat(CheckpointName().c_str(), &status) == 0 &&
        next.Checkpoint == IdentityOf(status))
        origin = next.Origin;
    else if (found)
        origin = information.Origin;
    else
        return 0;
    return 1;
}

int WriteCheckpoint(const CheckpointOrigin& origin) {
    FileReplacement checkpoint(CheckpointName().c_str(), (origin.Path + "/" + origin.Name).c_str());
    struct stat status;
    if (!checkpoint.Stream() || !WriteKirvoInto(checkpoint.Stream()) ||
        fstat(fileno(checkpoint.Stream()), &status) != 0 || !checkpoint.Finish())
        return 0;
    const std::string next = NextInformationName(Files.Number);
    return WriteInformation(next, {origin, IdentityOf(status)}) && checkpoint.PutInPlace() &&
           std::rename(next.c_str(), InformationName(Files.Number).c_str()) == 0;
}

void RemoveCheckpoint() {
    if (!Files.Number)
        return;
    // In this order a kill in between leaves no checkpoint without its information.
    for (const std::string& name :
         {ModelName(Files.Number), InformationName(Files.Number), NextInformationName(Files.Number)}) {
        unlink(name.c_str());
        RemoveUnfinishedReplacement(name.c_str());
    }
}

std::string PutCheckpointAside() {
    if (!Files.Number || !Exists(CheckpointName()))
        return "";
    for (int number = 1;; ++number) {
        const std::string aside = HomeName("UnreadCheckPoint", number, KirvoExtension);
        // Unlike renaming this replaces nothing.
        if (link(CheckpointName().c_str(), aside.c_str()) == 0 ||
            (errno != EEXIST && std::rename(CheckpointName().c_str(), aside.c_str()) == 0)) {
            RemoveCheckpoint();
            return aside;
        }
        if (errno != EEXIST)
            return "";
    }
}
