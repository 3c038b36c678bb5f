#include "shell/start_up.h"

#include <cstdlib>
#include <ctime>

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "shell/command_line.h"

void RunKirvo(int argumentCount, char* const arguments[]) {
    TrapStuff();
    OpenDebugStream();
    MemoryTracking(1);
    StartingUp = 1;
    FindDirectories(argumentCount > 0 ? arguments[0] : "Kirvo");
    CheckArgs(argumentCount, arguments);
    StartingUp = 0;
    srand48(std::time(nullptr));

    Quitting = 1;
    KillProgram(NormalEnd);
}
