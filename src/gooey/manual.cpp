#include "gooey/manual.h"

#include "gooey/manual_window.h"
#include "gooey/menu.h"
#include "gooey/menu_session.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"

#include "base/directories.h"
#include "base/trusted_places.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

constexpr char NoManual[] = "Error: Kirvo documentation not found!\n\n"
                            "It should be in \"Kirvo/manual\", but that directory doesn't exist...";
constexpr std::size_t LabelLimit = 45;

/// An opener that is at work, for as long as the browser runs on some desktops, and the page that it was given.
struct Opener {
    pid_t Process;
    std::string Page;
};

std::vector<Opener> Openers;

/// A screen in memory has no desktop around it.
bool HasDesktop() {
    const char* display = std::getenv("KIRVO_DISPLAY");
    return !display || std::strncmp(display, "headless", 8) != 0;
}

/// Starts the opener on a page, apart from the program's own input and output. False when there is none.
bool StartOpener(const std::string& page) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    char program[] = "xdg-open";
    std::string argument = ManualFile(page);
    char* arguments[] = {program, argument.data(), nullptr};
    pid_t opener = 0;
    bool started = posix_spawnp(&opener, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    if (started)
        Openers.push_back({opener, page});
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
    // A page of a folder that anybody may have filled is not for a browser.
    if (!HasDesktop() || !InstallationIsTrusted() || !StartOpener(name))
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
    for (std::size_t i = 0; i < Openers.size();) {
        int status = 0;
        if (waitpid(Openers[i].Process, &status, WNOHANG) == 0) {
            ++i;
            continue;
        }
        std::string page = Openers[i].Page;
        Openers.erase(Openers.begin() + static_cast<std::ptrdiff_t>(i));
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            ShowManualPage(page);
    }
}
