#include "base/memory.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "base/debug.h"

// The sanitizer's allocator must refuse a request for too much, as the system's does, instead of ending the test.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:intercept_tls_get_addr=0";
}

namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

class Memory : public testing::Test {
  protected:
    void SetUp() override { DeveloperBuild = 1; }

    void TearDown() override {
        MemoryTracking(0);
        DeveloperBuild = built;
    }

    template <class Action>
    static std::string ErrorsOf(Action action) {
        CaptureStderr();
        action();
        return GetCapturedStderr();
    }

    template <class Action>
    static std::string OutputOf(Action action) {
        CaptureStdout();
        action();
        return GetCapturedStdout();
    }

  private:
    int built = DeveloperBuild;
};

TEST_F(Memory, ReportsMisuseTrackedOrNot) {
    for (int tracking : {0, 1}) {
        MemoryTracking(tracking);
        EXPECT_EQ(ErrorsOf([] { EXPECT_EQ(Allocate(0), nullptr); }),
                  "Memory: Tried to allocate 0 bytes, NULL returned!\n");
        EXPECT_EQ(ErrorsOf([] { Free(nullptr); }), "Memory: Tried to free a NULL pointer!\n");
        EXPECT_EQ(ErrorsOf([] { EXPECT_EQ(CopyOfString(nullptr), nullptr); }), "");
        EXPECT_EQ(MemoryInUse(), 0u);
    }
}

TEST_F(Memory, KeepsTheOldBlockWhenTheSystemHasNoMore) {
    constexpr std::size_t tooMuch = PTRDIFF_MAX;
    for (int tracking : {0, 1}) {
        MemoryTracking(tracking);
        // The sanitizer's allocator adds lines of its own.
        EXPECT_NE(ErrorsOf([] { EXPECT_EQ(Allocate(tooMuch), nullptr); }).find("Memory: allocation failed!\n"),
                  std::string::npos);
        char* text = CopyOfString("kept");
        EXPECT_NE(ErrorsOf([&] { EXPECT_EQ(Reallocate(text, tooMuch), nullptr); }).find("Memory: realloc failed!\n"),
                  std::string::npos);
        EXPECT_STREQ(text, "kept");
        Free(text);
        EXPECT_EQ(MemoryInUse(), 0u);
    }
}

TEST_F(Memory, FollowsBlocksThroughTheirLives) {
    MemoryTracking(1);
    char* text = CopyOfString("seven..");
    EXPECT_EQ(MemoryInUse(), 8u);
    void* block = Reallocate(nullptr, 10);
    EXPECT_EQ(MemoryInUse(), 18u);
    block = Reallocate(block, 1000000);
    EXPECT_EQ(MemoryInUse(), 1000008u);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Reallocate(block, 0), nullptr); }),
              "Memory: Tried to allocate 0 bytes, NULL returned!\n");
    EXPECT_EQ(MemoryInUse(), 8u);
    EXPECT_STREQ(text, "seven..");
    Free(text);
    EXPECT_EQ(MemoryInUse(), 0u);
}

TEST_F(Memory, FindsEachOfManyBlocks) {
    MemoryTracking(1);
    constexpr std::size_t count = 5000; // several to a bucket
    void* blocks[count];
    for (std::size_t i = 0; i < count; ++i)
        blocks[i] = Allocate(1 + i % 1500);
    EXPECT_EQ(ErrorsOf([&] {
                  for (std::size_t i = 0; i < count; ++i)
                      Free(blocks[i * 7 % count]);
              }),
              "");
    EXPECT_EQ(MemoryInUse(), 0u);
}

TEST_F(Memory, LeavesForeignPointersAlone) {
    void* early = std::malloc(16); // a block that was never recorded
    std::strcpy(static_cast<char*>(early), "foreign");
    MemoryTracking(1);
    EXPECT_EQ(ErrorsOf([&] { Free(early); }), "Memory: bad free!\n");
    EXPECT_STREQ(static_cast<char*>(early), "foreign");
    EXPECT_EQ(ErrorsOf([&] { early = Reallocate(early, 32); }), "Memory: Bad reallocate - old base not found!\n");
    EXPECT_STREQ(static_cast<char*>(early), "foreign");
    EXPECT_EQ(MemoryInUse(), 0u);
    std::free(early);
}

TEST_F(Memory, TrapsBlocksOfOneSize) {
    void* block = nullptr;
    MemoryTracking(24);
    EXPECT_EQ(OutputOf([&] { block = Allocate(24); }), "Trap: 24\n");
    Free(block);
    EXPECT_EQ(OutputOf([&] { block = Allocate(25); }), "");
    Free(block);
    MemoryTracking(1);
    EXPECT_EQ(OutputOf([&] { block = Allocate(1); }), "");
    Free(block);
}

TEST_F(Memory, IsNotTrackedOutsideADeveloperBuild) {
    DeveloperBuild = 0;
    MemoryTracking(1);
    void* block = Allocate(5);
    EXPECT_EQ(MemoryInUse(), 0u);
    EXPECT_EQ(OutputOf([] { AnalyseMemory(1); }), "Memory tracking disabled, no analysis done...\n");
    Free(block);
}

TEST_F(Memory, AnalysisListsFiftyBlocksAndCountsAll) {
    MemoryTracking(1);
    const std::string clean = OutputOf([] { AnalyseMemory(0); });
    EXPECT_TRUE(clean == "Memory analysis: Squeaky clean!\n" || clean == "Memory analysis: As clean as a whistle!\n")
        << clean;

    void* blocks[60];
    for (void*& block : blocks)
        block = Allocate(3);
    std::string expected = "Memory in use:\n";
    for (int i = 1; i <= 50; ++i)
        expected += "Block #" + std::to_string(i) + ": 3 bytes\n";
    EXPECT_EQ(OutputOf([] { AnalyseMemory(0); }), expected + "etc...\nTotal unfreed memory: 180 bytes in 60 blocks\n");
    for (void* block : blocks)
        Free(block);
}

TEST_F(Memory, AnalysisShowsContentsOnRequest) {
    MemoryTracking(1);
    char* text = CopyOfString("Leak");
    EXPECT_EQ(OutputOf([] { AnalyseMemory(1); }), "Memory in use:\n"
                                                  "Block #1: 5 bytes\n"
                                                  "000000 4C 65 61 6B 00                                  Leak.\n"
                                                  "Total unfreed memory: 5 bytes in 1 blocks\n");
    Free(text);
}

TEST_F(Memory, DumpAlignsTheTextOfAShortRow) {
    const char bytes[] = "ABCDEFGHIJKLMNOP\x1f ~\x7f\xff";
    EXPECT_EQ(OutputOf([&] { Dump(bytes, 21); }),
              "000000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 ABCDEFGHIJKLMNOP\n"
              "000010 1F 20 7E 7F FF                                  . ~..\n");
    EXPECT_EQ(OutputOf([&] { Dump(bytes, 0); }), "");
}

} // namespace
