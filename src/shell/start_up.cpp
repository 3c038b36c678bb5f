#include "shell/start_up.h"

#include <cstdlib>
#include <initializer_list>
#include <string>

#include "base/debug.h"
#include "base/directories.h"
#include "base/exit.h"
#include "base/memory.h"
#include "files/file_errors.h"
#include "files/reader.h"
#include "platform/system.h"
#include "platform/text.h"
#include "shell/command_line.h"
#include "shell/slots.h"
#include "store/pools.h"
#include "store/storage.h"

namespace {

// The installation's own font, so that pictures do not depend on the machine's. A program that was not installed keeps
// the one of its source tree.
void UseInstalledFont() {
    gl::SetFontFile(std::string(KirvoDir) + "/data/fonts/LiberationSans-Regular.ttf");
}

// The model that the command line or the defaults file names; a new one when there is none. A file that cannot be read
// leaves a new model and is not told about.
void TakeFirstModel() {
    if (!FileName[0]) {
        StartingUp = 0;
        ResetStorage();
        return;
    }
    FileErrorOk = 1;
    ReadKirvo((std::string(FilePath) + "/" + FileName).c_str());
    FileErrorOk = 0;
}

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
    UseInstalledFont();
    FillSlots();
    InitialiseStorage();
    CheckArgs(argumentCount, arguments);
    TakeFirstModel();
    StartingUp = 0;
    srand48(gl::RandomSeed());

    Quitting = 1;
    if (DeveloperBuild)
        ReleaseModels();
    KillProgram(NormalEnd);
}
