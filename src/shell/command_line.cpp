#include "shell/command_line.h"

#include <cstdio>
#include <sys/stat.h>

#include "base/directories.h"

int DoAutoLoad = 1;

namespace {

void TakeModelFile(const char* argument) {
    char path[MaxFileName];
    struct stat status;
    if (!CopyFileName(path, argument) || !AddExtension(path, KirvoExtension) || stat(path, &status) != 0) {
        std::fprintf(stderr, "Kirvo: there is no model file \"%s\"\n", argument);
        return;
    }
    char *directory, *name;
    SplitFileName(path, directory, name);
    if (*directory)
        CopyFileName(FilePath, directory);
    else if (path[0] == '/')
        CopyFileName(FilePath, "/");
    else if (!WorkingDirectory(FilePath))
        CopyFileName(FilePath, ".");
    CopyFileName(FileName, name);
}

} // namespace

void CheckArgs(int argumentCount, char* const arguments[]) {
    if (argumentCount == 2)
        TakeModelFile(arguments[1]);
    else if (!DoAutoLoad) {
        CopyFileName(FilePath, HomeDir);
        FileName[0] = '\0';
    }
}
