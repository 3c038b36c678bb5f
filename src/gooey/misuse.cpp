#include "gooey/misuse.h"

#include "base/exit.h"
#include "base/memory.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

void EndForMisuse(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::exit(666);
}

void* AllocateZeros(std::size_t size) {
    if (size == 0)
        return nullptr;
    void* block = Allocate(size);
    if (!block)
        KillProgram(FatalEnd);
    return std::memset(block, 0, size);
}
