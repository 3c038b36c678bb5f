#include "gooey/manual.h"

#include "gooey/manual_window.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"

#include "base/directories.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

constexpr char NoManual[] = "Error: Kirvo documentation not found!\n\n"
                            "It should be in \"Kirvo/manual\", but that directory doesn't exist...";
constexpr std::size_t LabelLimit = 45;

/// The opener that is at work, and the page that it was given.
pid_t Opener = 0;
std::string OpenerPage;

/// A screen in memory has no desktop around it.
bool HasDesktop() {
    const char* display = std::getenv("KIRVO_DISPLAY");
    return !display || std::strncmp(display, "headless", 8) != 0;
}

/// Starts the opener on a file, apart from the program's own input and output. False when there is none.
bool StartOpener(const std::string& file) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    char program[] = "xdg-open";
    std::string argument = file;
    char* arguments[] = {program, argument.data(), nullptr};
    pid_t opener = 0;
    bool started = posix_spawnp(&opener, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (started)
        Opener = opener;
    return started;
}

} // namespace

void OpenManual(const char* page) {
    if (!ManualFound) {
        TellUserS(NoManual);
        return;
    }
    std::string name = page && *page ? page : ManualIndex;
    std::string file = ManualFile(name);
    struct stat status;
    if (stat(file.c_str(), &status) != 0) {
        TellUserS(("The manual page \"" + name + "\" could not be found.").c_str());
        return;
    }
    CheckManualOpener();
    if (HasDesktop() && !Opener && StartOpener(file))
        OpenerPage = name;
    else
        ShowManualPage(name);
}

void DoManualPage(const char* page, const char* label) {
    if (std::strlen(label) >= LabelLimit)
        return;
    const MenuEntry menu[] = {{label, MenuEntryTitle, 0, 0, nullptr, nullptr},
                              {msg(MsgReadManual), MenuEntryLast, 1, 0, nullptr, nullptr}};
    if (DoPopup(menu) == 1)
        OpenManual(page);
}

void CheckManualOpener() {
    int status = 0;
    if (!Opener || waitpid(Opener, &status, WNOHANG) == 0)
        return;
    Opener = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        ShowManualPage(OpenerPage);
}
