#include "shell/command_line.h"

#include <cstdio>
#include <filesystem>
#include <sys/stat.h>

#include "base/directories.h"

int DoAutoLoad = 1;

namespace {

// The defaults file and checkpoints name the model for later runs, which may start in another directory.
std::filesystem::path InFull(const char* path) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error).lexically_normal();
    return error ? path : full;
}

bool TakeModelFile(const char* argument) {
    char path[MaxFileName];
    struct stat status;
    if (!CopyFileName(path, argument) || !AddExtension(path, KirvoExtension) || stat(path, &status) != 0) {
        std::fprintf(stderr, "Kirvo: there is no model file \"%s\"\n", argument);
        return false;
    }
    const std::filesystem::path model = InFull(path);
    CopyFileName(FilePath, model.parent_path().c_str());
    CopyFileName(FileName, model.filename().c_str());
    return true;
}

} // namespace

void CheckArgs(int argumentCount, char* const arguments[]) {
    if ((argumentCount == 2 && TakeModelFile(arguments[1])) || DoAutoLoad)
        return;
    CopyFileName(FilePath, HomeDir);
    FileName[0] = '\0';
}
