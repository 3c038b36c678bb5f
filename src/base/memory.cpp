#include "base/memory.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>

#include "base/debug.h"

namespace {

struct BlockRecord {
    BlockRecord* Next;
    BlockRecord* Prev;
    void* Address;
    std::size_t Size;
};

constexpr int BucketCount = 512;
constexpr unsigned ListedBlocks = 50;

int MemoryTrack = 0;  // 0: off; above 1: on, and the size to trap
std::mutex TrackLock; // of what follows: images are read by several threads
BlockRecord* BlockTable[BucketCount];
BlockRecord* SpareRecords = nullptr;

void Report(const char* problem) {
    std::fprintf(stderr, "Memory: %s!\n", problem);
}

BlockRecord*& BucketOf(const void* address) {
    return BlockTable[(reinterpret_cast<std::uintptr_t>(address) >> 10) & (BucketCount - 1)];
}

BlockRecord* FindRecord(const void* address) {
    BlockRecord* record = BucketOf(address);
    while (record && record->Address != address)
        record = record->Next;
    return record;
}

void FileRecord(BlockRecord* record, void* address, std::size_t size) {
    BlockRecord*& bucket = BucketOf(address);
    *record = {bucket, nullptr, address, size};
    if (bucket)
        bucket->Prev = record;
    bucket = record;
}

void UnlinkRecord(BlockRecord* record) {
    if (record->Next)
        record->Next->Prev = record->Prev;
    if (record->Prev)
        record->Prev->Next = record->Next;
    else
        BucketOf(record->Address) = record->Next;
}

// A record that is in no bucket: a spare one, else a new one of the system's. Null when there is no memory.
BlockRecord* TakeRecord() {
    if (!SpareRecords)
        return static_cast<BlockRecord*>(std::malloc(sizeof(BlockRecord)));
    BlockRecord* record = SpareRecords;
    SpareRecords = record->Next;
    return record;
}

void PutBackRecord(BlockRecord* record) {
    record->Next = SpareRecords;
    SpareRecords = record;
}

// Nothing is locked while blocks are not tracked.
std::unique_lock<std::mutex> LockTracking() {
    return MemoryTrack ? std::unique_lock(TrackLock) : std::unique_lock<std::mutex>();
}

template <class Visitor>
void ForEachLiveBlock(Visitor visit) {
    for (BlockRecord* bucket : BlockTable)
        for (BlockRecord* record = bucket; record; record = record->Next)
            visit(*record);
}

} // namespace

void MemoryTracking(int value) {
    if (DeveloperBuild)
        MemoryTrack = value;
}

bool MemoryIsTracked() {
    return MemoryTrack != 0;
}

void* Allocate(std::size_t size) {
    if (size == 0) {
        Report("Tried to allocate 0 bytes, NULL returned");
        return nullptr;
    }
    const std::unique_lock lock = LockTracking();
    BlockRecord* record = MemoryTrack ? TakeRecord() : nullptr;
    void* block = MemoryTrack && !record ? nullptr : std::malloc(size);
    if (!block) {
        if (record)
            PutBackRecord(record);
        Report("allocation failed");
        return nullptr;
    }
    if (record) {
        FileRecord(record, block, size);
        if (MemoryTrack > 1 && size == static_cast<std::size_t>(MemoryTrack))
            std::printf("Trap: %zu\n", size);
    }
    return block;
}

void* Reallocate(void* block, std::size_t size) {
    if (!block)
        return Allocate(size);
    if (size == 0) {
        Free(block);
        return Allocate(size);
    }
    const std::unique_lock lock = LockTracking();
    // Looked up before the block moves: afterwards the old address may no longer be used, not even to compare with.
    BlockRecord* record = MemoryTrack ? FindRecord(block) : nullptr;
    void* moved = std::realloc(block, size);
    if (!moved) {
        Report("realloc failed");
        return nullptr;
    }
    if (record) {
        UnlinkRecord(record);
        FileRecord(record, moved, size);
    } else if (MemoryTrack)
        Report("Bad reallocate - old base not found");
    return moved;
}

void Free(void* block) {
    if (!block) {
        Report("Tried to free a NULL pointer");
        return;
    }
    if (MemoryTrack) {
        const std::unique_lock lock = LockTracking();
        BlockRecord* record = FindRecord(block);
        if (!record) {
            Report("bad free");
            return;
        }
        UnlinkRecord(record);
        PutBackRecord(record);
    }
    std::free(block);
}

char* CopyOfString(const char* text) {
    if (!text)
        return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    void* copy = Allocate(size);
    return copy ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

std::size_t MemoryInUse() {
    std::size_t total = 0;
    if (MemoryTrack)
        ForEachLiveBlock([&](const BlockRecord& record) { total += record.Size; });
    return total;
}

void AnalyseMemory(int dump) {
    if (!MemoryTrack) {
        std::printf("Memory tracking disabled, no analysis done...\n");
        return;
    }
    unsigned count = 0;
    std::size_t total = 0;
    ForEachLiveBlock([&](const BlockRecord& record) {
        if (count == 0)
            std::printf("Memory in use:\n");
        ++count;
        total += record.Size;
        if (count <= ListedBlocks) {
            std::printf("Block #%u: %zu bytes\n", count, record.Size);
            if (dump)
                Dump(record.Address, record.Size);
        } else if (count == ListedBlocks + 1)
            std::printf("etc...\n");
    });
    if (count)
        std::printf("Total unfreed memory: %zu bytes in %u blocks\n", total, count);
    else
        std::printf("Memory analysis: %s!\n", std::time(nullptr) % 2 ? "As clean as a whistle" : "Squeaky clean");
}

void Dump(const void* address, std::size_t length) {
    constexpr std::size_t RowLength = 16;
    const auto* bytes = static_cast<const unsigned char*>(address);
    for (std::size_t start = 0; start < length; start += RowLength) {
        const std::size_t count = length - start < RowLength ? length - start : RowLength;
        char text[RowLength + 1] = {};
        std::printf("%06zX ", start);
        for (std::size_t i = 0; i < count; ++i) {
            const unsigned char byte = bytes[start + i];
            std::printf("%02X ", byte);
            text[i] = byte >= 32 && byte <= 126 ? static_cast<char>(byte) : '.';
        }
        std::printf("%*s%s\n", static_cast<int>(3 * (RowLength - count)), "", text);
    }
}
