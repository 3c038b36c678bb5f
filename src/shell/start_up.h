#pragma once

/// Runs the program from start to end, with the arguments of main.
[[noreturn]] void RunKirvo(int argumentCount, char* const arguments[]);
