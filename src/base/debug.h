#pragma once

#include <cstdio>

/// Non-zero in a developer build: trace lines go to the standard error stream, memory can be tracked, crashes are left
/// to the debugger. Comes from the build option KIRVO_DEVELOPER; tests set it.
extern int DeveloperBuild;

/// The debug stream. Null until OpenDebugStream has run, and again after CloseDebugStream: write to it with Trace.
extern std::FILE* debug;

/// Points `debug` at the standard error stream in a developer build, otherwise at the null device.
void OpenDebugStream();

/// Closes what OpenDebugStream opened; does nothing when no stream is open.
void CloseDebugStream();

/// Writes a line of the program's own to the debug stream, in the manner of printf.
void Trace(const char* format, ...) __attribute__((format(printf, 1, 2)));
