#include "base/record_chunks.h"

#include <algorithm>
#include <cstring>
#include <functional>

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
constexpr std::size_t UsualChunkSize = 1 << 16;
} // namespace

RecordChunks::RecordChunks(std::size_t recordSize, std::size_t linkOffset)
    : RecordSize(recordSize),
      LinkOffset(linkOffset),
      ChunkSize(std::max<std::size_t>(1, UsualChunkSize / recordSize) * recordSize) {}

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
        auto* start = static_cast<char*>(Allocate(ChunkSize));
        if (!start)
            return nullptr;
        const auto place =
            std::find_if(Chunks.rbegin(), Chunks.rend(), [&](const Chunk& chunk) { return chunk.Start < start; });
        Chunks.insert(place.base(), {start, 0});
        NextFresh = start;
        EndOfFresh = start + ChunkSize;
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
    return address < chunk.Start + ChunkSize ? &chunk : nullptr;
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
        else if (chunk->Spare * RecordSize != ChunkSize)
            Chain(record, staying);
    }
    std::erase_if(Chunks, [&](const Chunk& chunk) {
        const bool allSpare = chunk.Spare * RecordSize == ChunkSize;
        if (allSpare)
            Free(chunk.Start);
        return allSpare;
    });
    return staying;
}
