#include "base/record_chunks.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <vector>

#include "base/debug.h"
#include "base/memory.h"

namespace {

struct Record {
    double Payload;
    Record* Link;
    char Tail[56];
};

class Chunks : public testing::Test {
  protected:
    void SetUp() override {
        DeveloperBuild = 1;
        ChunkedRecords = 1;
    }

    void TearDown() override {
        MemoryTracking(0);
        DeveloperBuild = built;
        ChunkedRecords = usual;
    }

    static Record* ChainOf(const std::vector<Record*>& records) {
        Record* first = nullptr;
        for (Record* record : records) {
            record->Link = first;
            first = record;
        }
        return first;
    }

    RecordChunks chunks{sizeof(Record), offsetof(Record, Link)};

  private:
    int built = DeveloperBuild;
    int usual = ChunkedRecords;
};

TEST_F(Chunks, RecordsAreApartAndMostlyNeighbours) {
    std::vector<Record*> records;
    for (int i = 0; i < 10000; ++i) {
        records.push_back(static_cast<Record*>(chunks.Take()));
        records.back()->Payload = i;
        records.back()->Tail[55] = static_cast<char>(i);
    }
    int neighbours = 0;
    for (int i = 0; i < 10000; ++i) {
        EXPECT_EQ(records[i]->Payload, i);
        EXPECT_EQ(records[i]->Tail[55], static_cast<char>(i));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(records[i]) % alignof(Record), 0u);
        neighbours += i > 0 && records[i] == records[i - 1] + 1;
    }
    EXPECT_GT(neighbours, 9900);
    EXPECT_EQ(chunks.Release(ChainOf(records)), nullptr);
}

TEST_F(Chunks, OnlyRecordsBesideOnesInUseStay) {
    std::vector<Record*> records;
    for (int i = 0; i < 10000; ++i)
        records.push_back(static_cast<Record*>(chunks.Take()));
    Record* inUse = records[5000];
    inUse->Payload = 291;
    records.erase(records.begin() + 5000);
    std::shuffle(records.begin(), records.end(), std::mt19937(1));

    std::set<Record*> staying;
    auto* first = static_cast<Record*>(chunks.Release(ChainOf(records)));
    for (Record* record = first; record; record = record->Link)
        EXPECT_TRUE(staying.insert(record).second);
    EXPECT_FALSE(staying.contains(inUse));
    EXPECT_GT(staying.size(), 0u);
    EXPECT_LT(staying.size() * sizeof(Record), 128u * 1024);
    EXPECT_EQ(inUse->Payload, 291);

    inUse->Link = first;
    EXPECT_EQ(chunks.Release(inUse), nullptr);
    auto* afresh = static_cast<Record*>(chunks.Take());
    afresh->Link = nullptr;
    EXPECT_EQ(chunks.Release(afresh), nullptr);
    EXPECT_EQ(chunks.Release(nullptr), nullptr);
}

TEST_F(Chunks, TrackedRecordsAreBlocksOfTheirOwn) {
    std::vector<Record*> records = {static_cast<Record*>(chunks.Take())}; // untracked: opens a chunk
    MemoryTracking(1);
    for (std::size_t i = 1; i <= 100; ++i) {
        records.push_back(static_cast<Record*>(chunks.Take()));
        EXPECT_EQ(MemoryInUse(), i * sizeof(Record));
    }
    Record* untracked = records.front();
    records.erase(records.begin());
    Record* first = ChainOf(records);
    MemoryTracking(1);
    testing::internal::CaptureStderr();
    auto* staying = static_cast<Record*>(chunks.Release(first));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(MemoryInUse(), 0u);
    MemoryTracking(0);
    untracked->Link = staying;
    EXPECT_EQ(chunks.Release(untracked), nullptr);
}

} // namespace
