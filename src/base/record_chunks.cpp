#include "base/record_chunks.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <sys/mman.h>
#include <unistd.h>

#include "base/memory.h"

#if defined(__SANITIZE_ADDRESS__)
int ChunkedRecords = 0;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
int ChunkedRecords = 0;
#else
int ChunkedRecords = 1;
#endif
#else
int ChunkedRecords = 1;
#endif

namespace {
constexpr std::size_t SmallChunkSize = 1 << 16, LargeChunkSize = 1 << 20;

/// While no more than this is held chunks are small.
constexpr std::size_t SmallModelSize = 1 << 22;

/// Has the system hand out all pages of a chunk at once: page by page, at the first touch of each, takes a third of the
/// time that a large model is read in. Where it cannot, they come as they are touched.
void TouchPages(char* start, std::size_t size) {
    const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::size_t skipped = (pageSize - address % pageSize) % pageSize;
    madvise(start + skipped, (size - skipped) / pageSize * pageSize, MADV_POPULATE_WRITE);
}

} // namespace

RecordChunks::RecordChunks(std::size_t recordSize, std::size_t linkOffset)
    : RecordSize(recordSize),
      LinkOffset(linkOffset) {}

std::size_t RecordChunks::NextChunkSize() const {
    const std::size_t wanted = Held < SmallModelSize ? SmallChunkSize : LargeChunkSize;
    return std::max<std::size_t>(1, wanted / RecordSize) * RecordSize;
}

// The link is a pointer to the record's own type, unknown here: it is read and written by its bytes.
void* RecordChunks::NextOf(const void* record) const {
    void* next;
    std::memcpy(&next, static_cast<const char*>(record) + LinkOffset, sizeof next);
    return next;
}

void RecordChunks::Chain(void* record, void*& first) const {
    std::memcpy(static_cast<char*>(record) + LinkOffset, &first, sizeof first);
    first = record;
}

void* RecordChunks::Take() {
    if (MemoryIsTracked() || !ChunkedRecords)
        return Allocate(RecordSize);
    if (NextFresh == EndOfFresh) {
        const std::size_t size = NextChunkSize();
        auto* start = static_cast<char*>(Allocate(size));
        if (!start)
            return nullptr;
        if (size > SmallChunkSize)
            TouchPages(start, size);
        Held += size;
        const auto place =
            std::find_if(Chunks.rbegin(), Chunks.rend(), [&](const Chunk& chunk) { return chunk.Start < start; });
        Chunks.insert(place.base(), {start, size, 0});
        NextFresh = start;
        EndOfFresh = start + size;
    }
    void* record = NextFresh;
    NextFresh += RecordSize;
    return record;
}

RecordChunks::Chunk* RecordChunks::ChunkOf(const void* record) {
    const auto* address = static_cast<const char*>(record);
    const auto after =
        std::upper_bound(Chunks.begin(), Chunks.end(), address, [](const char* sought, const Chunk& chunk) {
            return std::less<const char*>()(sought, chunk.Start);
        });
    if (after == Chunks.begin())
        return nullptr;
    Chunk& chunk = *std::prev(after);
    return address < chunk.Start + chunk.Size ? &chunk : nullptr;
}

void* RecordChunks::Release(void* firstSpare) {
    for (Chunk& chunk : Chunks)
        chunk.Spare = 0;
    for (; NextFresh != EndOfFresh; NextFresh += RecordSize)
        Chain(NextFresh, firstSpare);
    for (void* record = firstSpare; record; record = NextOf(record))
        if (Chunk* chunk = ChunkOf(record))
            ++chunk->Spare;

    void* staying = nullptr;
    for (void *record = firstSpare, *next; record; record = next) {
        next = NextOf(record);
        const Chunk* chunk = ChunkOf(record);
        if (!chunk)
            Free(record);
        else if (chunk->Spare * RecordSize != chunk->Size)
            Chain(record, staying);
    }
    std::erase_if(Chunks, [&](const Chunk& chunk) {
        const bool allSpare = chunk.Spare * RecordSize == chunk.Size;
        if (allSpare) {
            Free(chunk.Start);
            Held -= chunk.Size;
        }
        return allSpare;
    });
    return staying;
}
