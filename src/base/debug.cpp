#include "base/debug.h"

#include <cstdarg>

#ifdef KIRVO_DEVELOPER_BUILD
int DeveloperBuild = 1;
#else
int DeveloperBuild = 0;
#endif

std::FILE* debug = nullptr;

void OpenDebugStream() {
    CloseDebugStream();
    debug = DeveloperBuild ? stderr : std::fopen("/dev/null", "w");
}

void CloseDebugStream() {
    // The standard error stream stays open for messages that other parts still have to write while the program ends.
    if (debug && debug != stderr)
        std::fclose(debug);
    debug = nullptr;
}

void Trace(const char* format, ...) {
    if (!debug)
        return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(debug, format, arguments);
    va_end(arguments);
}
