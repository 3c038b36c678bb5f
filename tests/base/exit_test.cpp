#include "base/exit.h"

#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "base/debug.h"
#include "base/memory.h"
#include "support/exactly.h"

namespace {

class Exit : public testing::Test {
  protected:
    void SetUp() override { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

    void TearDown() override { DeveloperBuild = built; }

  private:
    int built = DeveloperBuild;
};

TEST_F(Exit, TellsItsReason) {
    DeveloperBuild = 0;
    EXPECT_EXIT(KillProgram(NormalEnd), testing::ExitedWithCode(0), Exactly(""));
    EXPECT_EXIT(KillProgram(FatalEnd), testing::ExitedWithCode(0), Exactly("Kirvo: Fatal error in program...\a\n"));
    EXPECT_EXIT(KillProgram(42), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Unknown signal 42\a\n"));
    EXPECT_EXIT(KillProgram(SIGBUS), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Bus error...\a\n"));
    EXPECT_EXIT(KillProgram(SIGSEGV), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Segmentation violation...\a\n"));
    EXPECT_EXIT(KillProgram(SIGTERM), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Program killed by user\n"));
}

TEST_F(Exit, TrappedSignalsEndTheProgram) {
    struct Case {
        int Signal;
        std::string Text;
    };

    const Case cases[] = {{SIGTERM, "\n\nKirvo: Program killed by user\n"},
                          {SIGBUS, "\n\nKirvo: Bus error...\a\n"},
                          {SIGSEGV, "\n\nKirvo: Segmentation violation...\a\n"}};
    for (const Case& c : cases) {
        const auto raiseTrapped = [&] {
            DeveloperBuild = 0;
            TrapStuff();
            raise(c.Signal);
        };
        EXPECT_EXIT(raiseTrapped(), testing::ExitedWithCode(0), Exactly(c.Text));
    }
}

int Overflow(int depth) {
    if (depth < 0)
        return 0;
    volatile char frame[1024] = {};
    frame[depth % 1024] = 1;
    return Overflow(depth + 1) + frame[0];
}

TEST_F(Exit, DoesNotComeWhenNobodyListens) {
    const auto writeToNobody = [] {
        TrapStuff();
        std::raise(SIGPIPE);
        _exit(7);
    };
    EXPECT_EXIT(writeToNobody(), testing::ExitedWithCode(7), "");
}

TEST_F(Exit, AStackOverflowIsToldToo) {
    const auto overflow = [] {
        DeveloperBuild = 0;
        TrapStuff();
        Overflow(0);
    };
    EXPECT_EXIT(overflow(), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Segmentation violation...\a\n"));
}

TEST_F(Exit, ADeveloperBuildLeavesCrashesToTheDebugger) {
    for (int number : {SIGBUS, SIGSEGV}) {
        const auto raiseUntrapped = [&] {
            DeveloperBuild = 1;
            signal(number, SIG_DFL);
            TrapStuff();
            raise(number);
        };
        EXPECT_EXIT(raiseUntrapped(), testing::KilledBySignal(number), "");
    }
    const auto terminate = [] {
        DeveloperBuild = 1;
        TrapStuff();
        raise(SIGTERM);
    };
    EXPECT_EXIT(terminate(), testing::ExitedWithCode(0), Exactly("\n\nKirvo: Program killed by user\n"));
}

TEST_F(Exit, ADeveloperBuildReportsLeaksAtTheNormalEndOnly) {
    const auto leakAndEnd = [](int code) {
        DeveloperBuild = 1;
        MemoryTracking(1);
        CopyOfString("12345678901");
        std::fflush(stdout);
        std::setvbuf(stdout, nullptr, _IONBF, 0);
        stdout = stderr; // where a death test can see it
        KillProgram(code);
    };
    EXPECT_EXIT(leakAndEnd(NormalEnd), testing::ExitedWithCode(0), "Total unfreed memory: 12 bytes in 1 blocks");
    EXPECT_EXIT(leakAndEnd(FatalEnd), testing::ExitedWithCode(0), Exactly("Kirvo: Fatal error in program...\a\n"));
}

TEST(DebugStream, IsTheNullDeviceButForADeveloperBuild) {
    const int built = DeveloperBuild;
    for (int developer : {0, 1}) {
        DeveloperBuild = developer;
        testing::internal::CaptureStderr();
        Trace("before %d\n", 1); // not open yet: nowhere to go, no harm
        OpenDebugStream();
        Trace("open %d\n", 2);
        std::fflush(debug);
        CloseDebugStream();
        Trace("after %d\n", 3);
        std::fputs("still there\n", stderr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), developer ? "open 2\nstill there\n" : "still there\n");
    }
    DeveloperBuild = built;
}

} // namespace
