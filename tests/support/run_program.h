#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// How to start a program, and with what around it.
struct ProgramStart {
    std::filesystem::path Program;
    std::vector<std::string> Arguments;                           // without the program's own name
    std::string Name;                                             // as the program sees it; empty: Program
    std::filesystem::path Directory = "/";                        // it starts in
    std::vector<std::pair<std::string, std::string>> Environment; // all of it
    int PendingSignal = 0; // waits for the program to unblock it: arrives as soon as its handlers stand
    std::chrono::milliseconds KillAfter{0}; // when it is killed without warning; 0: never
};

/// What a program left behind.
struct ProgramEnd {
    int Status = -1; // exit status; -1 when a signal ended it
    int Signal = 0;  // that ended it
    std::string Output;
    std::string Errors;
    /// What it and its threads took: processor time, and the most memory at once.
    double Seconds = 0, Megabytes = 0;
};

/// Runs a program with no input until it ends. Throws when it cannot be run.
ProgramEnd RunProgram(const ProgramStart& start);
