#include "shell/start_up.h"

#include <cstdlib>
#include <ctime>
#include <initializer_list>

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "shell/command_line.h"
#include "store/pools.h"
#include "store/storage.h"

namespace {

// Releases all that is left of both files, so that a developer build's report of memory shows only what was lost. Users
// need not wait for it: the system takes the memory back faster.
void ReleaseModels() {
    for (const int merging : {1, 0}) {
        PointToMerge(merging);
        ResetStorage();
    }
    FreeWorkPolys();
    FreeClippingBeads();
}

} // namespace

void RunKirvo(int argumentCount, char* const arguments[]) {
    TrapStuff();
    OpenDebugStream();
    MemoryTracking(1);
    StartingUp = 1;
    FindDirectories(argumentCount > 0 ? arguments[0] : "Kirvo");
    InitialiseStorage();
    CheckArgs(argumentCount, arguments);
    if (!FileName[0]) {
        StartingUp = 0;
        ResetStorage();
    }
    StartingUp = 0;
    srand48(std::time(nullptr));

    Quitting = 1;
    if (DeveloperBuild)
        ReleaseModels();
    KillProgram(NormalEnd);
}
