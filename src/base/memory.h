#pragma once

#include <cstddef>

// All dynamic memory of the program's records, strings and tables goes through these calls. In a developer build they
// can keep a record of every live block. A misuse is reported on the standard error stream as "Memory: ...!".

/// Switches tracking on (1), or on with blocks of one size trapped (that size, above 1), or off (0). In a build that is
/// not a developer build it does nothing: tracking stays off.
void MemoryTracking(int value);

/// True while live blocks are recorded.
bool MemoryIsTracked();

/// A block of `size` bytes with undefined contents, aligned for any type; null, after a message, when there is none or
/// the size is 0. Released with Free.
void* Allocate(std::size_t size);

/// The block resized, possibly moved; a null `block` behaves as Allocate. Null, after a message, when there is no
/// memory (the old block stays valid) or when the size is 0 (the old block is freed).
void* Reallocate(void* block, std::size_t size);

/// Releases a block. With tracking on, a pointer that is not a recorded block is reported and left alone.
void Free(void* block);

/// A copy of the text, to be released with Free; null for null.
char* CopyOfString(const char* text);

/// Total bytes of the recorded live blocks; 0 while tracking is off.
std::size_t MemoryInUse();

/// Lists the recorded live blocks on the standard output, the first 50 one by one; with `dump` set each of these also
/// in hexadecimal.
void AnalyseMemory(int dump);

/// Lists `length` bytes of memory on the standard output, 16 a row, in hexadecimal and as characters.
void Dump(const void* address, std::size_t length);
