#pragma once

#include <cstddef>
#include <vector>

/// Where a pool gets its fresh records of one type: cut in order from larger blocks, which halves the cost of building
/// a large model and keeps neighbours together. While memory is tracked, and in sanitized builds, every record is a
/// block of its own, so that a report or a sanitizer sees each of them.
class RecordChunks {
  public:
    /// `recordSize` in bytes, a multiple of the record's alignment; `linkOffset` is the offset of the pointer that
    /// chains spare records. Holds no memory until the first Take.
    RecordChunks(std::size_t recordSize, std::size_t linkOffset);

    /// A fresh record with undefined contents; null, after the allocator's message, when there is no memory.
    void* Take();

    /// Gives the chain of spare records that starts at `firstSpare` back to the allocator. Returns a chain of those
    /// that must stay because they share a chunk with a record still in use; normally null.
    [[nodiscard]] void* Release(void* firstSpare);

  private:
    struct Chunk {
        char* Start;
        std::size_t Size;  // bytes, of whole records
        std::size_t Spare; // records, counted during Release only
    };

    /// A large model's chunks are larger, so that their pages can be had together.
    std::size_t NextChunkSize() const;
    Chunk* ChunkOf(const void* record);
    void* NextOf(const void* record) const;
    void Chain(void* record, void*& first) const; // puts the record before the first of a chain

    std::size_t RecordSize;
    std::size_t LinkOffset;
    std::size_t Held = 0;      // bytes of all chunks
    char* NextFresh = nullptr; // the rest of the chunk that is being cut
    char* EndOfFresh = nullptr;
    std::vector<Chunk> Chunks; // by address
};

/// 1 when records may share chunks; starts as 0 in sanitized builds. Tests set it.
extern int ChunkedRecords;
