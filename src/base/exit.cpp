#include "base/exit.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <unistd.h>

#include "base/debug.h"
#include "base/memory.h"

int StartingUp = 0;
int Quitting = 0;

namespace {

// The text for a trapped signal; null for any other code.
const char* SignalText(int code) {
    switch (code) {
    case SIGBUS:
        return "\n\nKirvo: Bus error...\a\n";
    case SIGSEGV:
        return "\n\nKirvo: Segmentation violation...\a\n";
    case SIGTERM:
        return "\n\nKirvo: Program killed by user\n";
    default:
        return nullptr;
    }
}

// A stack of its own, so that a handler can still run when the signal was raised by a stack overflow.
alignas(16) char HandlerStack[64 * 1024];

// A program inherits the signals that its starter had blocked.
void Unblock(std::initializer_list<int> numbers) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : numbers)
        sigaddset(&set, number);
    sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

constexpr unsigned SecondsToCome = 5;

/// The signal that asked for the end.
volatile std::sig_atomic_t AskingSignal = 0;
volatile std::sig_atomic_t SignalsWait = 0;

void Trap(int number, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_ONSTACK;
    sigaction(number, &action, nullptr);
}

[[noreturn]] void EndBy(int number) {
    if (number == SIGTERM)
        KillProgram(number);
    // Whoever waits for the program sees what ended it.
    std::signal(number, SIG_DFL);
    Unblock({number});
    std::raise(number);
    _exit(0);
}

/// The end of a session often sends several: the first one counts.
void NoteEndingSignal(int number) {
    if (!SignalsWait)
        EndBy(number);
    if (AskingSignal)
        return;
    AskingSignal = number;
    alarm(SecondsToCome);
}

void EndLate(int) {
    EndBy(AskingSignal ? AskingSignal : SIGTERM);
}

void TrapUnlessIgnored(int number) {
    struct sigaction before = {};
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN)
        return;
    Trap(number, NoteEndingSignal);
}

} // namespace

void KillProgram(int code) {
    if (const char* text = SignalText(code)) {
        // Only what is safe inside a signal handler: the heap or a stream may be locked by the code that was
        // interrupted.
        [[maybe_unused]] const auto written = write(STDERR_FILENO, text, std::strlen(text));
        _exit(0);
    }
    if (code == FatalEnd)
        std::fprintf(stderr, "Kirvo: Fatal error in program...\a\n");
    else if (code != NormalEnd)
        std::fprintf(stderr, "\n\nKirvo: Unknown signal %d\a\n", code);
    else if (DeveloperBuild)
        AnalyseMemory(1);
    CloseDebugStream();
    std::exit(0);
}

void TrapStuff() {
    stack_t stack = {};
    stack.ss_sp = HandlerStack;
    stack.ss_size = sizeof HandlerStack;
    sigaltstack(&stack, nullptr);

    Trap(SIGTERM, NoteEndingSignal);
    Trap(SIGALRM, EndLate);
    TrapUnlessIgnored(SIGHUP);
    TrapUnlessIgnored(SIGINT);
    if (!DeveloperBuild) {
        Trap(SIGBUS, KillProgram);
        Trap(SIGSEGV, KillProgram);
    }
    // A file that grows beyond the user's limit is a failed save, not the end.
    std::signal(SIGXFSZ, SIG_IGN);
    // Nobody need listen to what the program tells. Programs that it starts get the default back, as of every handler.
    std::signal(SIGPIPE, [](int) {});
    Unblock({SIGTERM, SIGBUS, SIGSEGV});
}

void LetSignalsWait() {
    SignalsWait = 1;
}

int EndAsked() {
    return AskingSignal;
}

void StopWaitingForEnd() {
    alarm(0);
}

void EndAsAsked() {
    EndBy(EndAsked());
}
