#include "files/file_contents.h"

#include "base/memory.h"
#include "files/reading_progress.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

FileContents::FileContents(const char* name, std::size_t head)
    : Descriptor(open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) { // a pipe must not make us wait for its writer
    struct stat status;
    if (Descriptor < 0 || fstat(Descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return;
    FileSize = static_cast<std::size_t>(status.st_size);
    ReadUpTo(std::min(head, FileSize));
}

FileContents::~FileContents() {
    if (Descriptor >= 0)
        close(Descriptor);
    if (Block)
        Free(Block);
}

bool FileContents::ReadAll() {
    return ReadUpTo(FileSize);
}

bool FileContents::ReadUpTo(std::size_t size) {
    if (size <= Used)
        return true;
    auto* block = static_cast<unsigned char*>(Reallocate(Block, size));
    if (!block)
        return false;
    Block = block;
    constexpr std::size_t mostAtOnce = std::size_t{1} << 22;
    while (Used < size) {
        if (!NoteFetchingProgress(Used, FileSize))
            break;
        const ssize_t got = read(Descriptor, Block + Used, std::min(size - Used, mostAtOnce));
        if (got <= 0)
            break;
        Used += static_cast<std::size_t>(got);
    }
    return true;
}
