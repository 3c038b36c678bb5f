#include "base/directories.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

char HomeDir[MaxFileName];
char KirvoDir[MaxFileName];
char DefaultFile[MaxFileName];
int ManualFound = 0;
char FilePath[MaxFileName];
char FileName[MaxFileName];

namespace {

// Whether the path leads to a file of this type (S_IFDIR, S_IFREG).
bool IsOfType(const std::string& path, mode_t type) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == type;
}

bool TryInstallation(const std::string& directory) {
    if (!CopyFileName(KirvoDir, directory.c_str()) || !IsOfType(directory, S_IFDIR) ||
        !IsOfType(directory + "/Kirvo", S_IFREG))
        return false;
    ManualFound = IsOfType(directory + "/manual", S_IFDIR);
    if (!ManualFound)
        std::fprintf(stderr, "\n\nWarning: could not find Kirvo documentation\n");
    return true;
}

bool TryDirectoryOfProgram(const char* programPath, const char* workingDirectory) {
    char *directory, *name;
    SplitFileName(programPath, directory, name);
    const std::string place = directory;
    return TryInstallation(place.starts_with('/') ? place : std::string(workingDirectory) + "/" + place);
}

/// However it was started: through the search path, or by a link.
bool TryDirectoryOfRunningProgram() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return !error && TryInstallation(program.parent_path());
}

[[noreturn]] void EndWithoutHome(const char* reason) {
    std::fprintf(stderr, "Kirvo: %s; set HOME to your home directory and start Kirvo again\n", reason);
    std::exit(1);
}

[[noreturn]] void EndWithoutInstallation() {
    std::fprintf(stderr, "\n\n\n\n\n\n\n\n\n\n\n\n\n\nInstallation error:\a\n"
                         "Kirvo has not been installed correctly, the Kirvo executable and documentation\n"
                         "could not be found.\n\n"
                         "You should either:\n"
                         "a) Place the folder \"Kirvo\" in your home directory (/usr/people/yourname)\n"
                         "b) Make a link to the folder \"Kirvo\", and place that in your home directory\n"
                         "   (with the name \"Kirvo\")\n");
    std::exit(0);
}

} // namespace

int WorkingDirectory(char (&destination)[MaxFileName]) {
    char directory[MaxFileName];
    return getcwd(directory, sizeof directory) ? CopyFileName(destination, directory) : 0;
}

void FindDirectories(const char* programPath) {
    const char* home = std::getenv("HOME");
    if (!home || !*home)
        EndWithoutHome("the environment variable HOME is not set");
    const std::string defaults = std::string(home) + "/.kirvorc";
    if (!CopyFileName(DefaultFile, defaults.c_str()) || !CopyFileName(HomeDir, home))
        EndWithoutHome("the environment variable HOME is too long");

    const char* named = std::getenv("KIRVOHOME");
    char current[MaxFileName] = "";
    const bool found = TryInstallation(std::string(HomeDir) + "/Kirvo") || (named && TryInstallation(named)) ||
                       (WorkingDirectory(current) && TryInstallation(current)) ||
                       TryDirectoryOfProgram(programPath, current) || TryDirectoryOfRunningProgram();
    if (!found)
        EndWithoutInstallation();
}
