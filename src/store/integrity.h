#pragma once

/// Checks the lists of the current object against each other; ends the program through IntegrityFail at the first that
/// is broken.
void CheckIntegrity();

/// Reports a broken invariant of the store on the standard error stream and ends the program.
[[noreturn]] void IntegrityFail(const char* message);
