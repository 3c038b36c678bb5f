#pragma once

#include <cstddef>

/// Ends the program with exit status 666 after a message on the standard error stream, in the manner of printf: a
/// window or gadget was used as no correct program uses it.
[[noreturn]] void EndForMisuse(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// A block of zeros, released with Free; without memory the program ends. Never null but for size 0.
void* AllocateZeros(std::size_t size);
