#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// Exit statuses of kirvo-file.
enum KirvoFileStatus : int {
    AllIsWell = 0,
    FileHasProblems = 1, // cannot be read or written, or is not as it should be
    BadUsage = 2
};

/// Runs one command with its arguments, the program's own name left out. Answers go to `answer`, complaints to the
/// standard error stream.
KirvoFileStatus RunKirvoFile(const std::vector<std::string>& arguments, std::FILE* answer);
