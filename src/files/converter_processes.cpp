#include "files/converter_processes.h"

#include "base/debug.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr char OldDirectory[] = "/usr/tmp";
constexpr int MillisecondsBetweenSteps = 10;

bool IsDirectory(const char* path) {
    struct stat status;
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// This program's environment with the variables of converters.
std::vector<std::string> Environment(const ConverterStart& start, const ConverterFolder& folder) {
    constexpr std::string_view temporary = "KIRVO_TEMPORARY=", model = "KIRVO_MODEL_DIRECTORY=";
    std::vector<std::string> variables;
    for (char** variable = environ; *variable; ++variable)
        if (const std::string_view text = *variable; !text.starts_with(temporary) && !text.starts_with(model))
            variables.emplace_back(text);
    variables.push_back(std::string(temporary) + folder.Prefix());
    if (!start.ModelDirectory.empty())
        variables.push_back(std::string(model) + start.ModelDirectory);
    return variables;
}

// Apart from this program's files and streams, and in a group of its own that can be ended as a whole.
int Spawn(pid_t& process, std::vector<std::string> command, std::vector<std::string> environment) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const std::vector<char*> arguments = Pointers(command), variables = Pointers(environment);
    const int failure = posix_spawn(&process, arguments[0], &actions, &attributes, arguments.data(), variables.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return failure;
}

// A script that does not say what it is a script of is the shell's; its arguments are never looked at as commands.
int SpawnProgramOrScript(pid_t& process, const ConverterStart& start, const ConverterFolder& folder) {
    std::vector<std::string> command = {start.Program};
    command.insert(command.end(), start.Arguments.begin(), start.Arguments.end());
    const std::vector<std::string> environment = Environment(start, folder);
    const int failure = Spawn(process, command, environment);
    if (failure != ENOEXEC)
        return failure;
    command.insert(command.begin(), "/bin/sh");
    return Spawn(process, std::move(command), environment);
}

// Waits a moment, or less when the process ends.
void WaitAMoment(int processDescriptor) {
    pollfd process = {processDescriptor, POLLIN, 0}; // a descriptor below 0 is passed over
    poll(&process, 1, MillisecondsBetweenSteps);
}

bool HasEnded(pid_t process, ConverterEnd& end) {
    int status = 0;
    const pid_t ended = waitpid(process, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR))
        return false;
    if (ended == process && WIFSIGNALED(status))
        end.Signal = WTERMSIG(status);
    else if (ended == process)
        end.Status = WEXITSTATUS(status);
    return true;
}

// What a converter says goes onto one line.
std::string OneLine(std::string text) {
    for (char& character : text)
        if (static_cast<unsigned char>(character) < ' ')
            character = ' ';
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string::npos ? 0 : last + 1);
}

std::string TextOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string WhyItFailed(const ConverterEnd& end, const std::string& errorFile) {
    if (end.NotStarted)
        return std::string("the converter cannot be started: ") + std::strerror(end.NotStarted);
    if (fs::exists(errorFile)) {
        const std::string text = OneLine(TextOf(errorFile));
        return text.empty() ? "the converter failed and does not say why" : text;
    }
    if (end.TookTooLong)
        return "the converter took too long";
    if (end.Signal)
        return std::string("the converter failed: ") + strsignal(end.Signal);
    return "";
}

} // namespace

ConverterFolder::ConverterFolder() {
    const char* chosen = std::getenv("TMPDIR");
    if (!chosen || !*chosen)
        chosen = "/tmp";
    if (std::strcmp(chosen, OldDirectory) == 0 && IsDirectory(OldDirectory)) {
        Beginning = std::string(OldDirectory) + "/Kirvo";
        Names = {AnswerFile(), ErrorFile(), ProgressFile()};
        return;
    }
    std::string pattern = std::string(chosen) + "/kirvo-XXXXXX";
    if (!mkdtemp(pattern.data())) {
        Failure = pattern + " cannot be made: " + std::strerror(errno);
        return;
    }
    Folder = pattern;
    Beginning = Folder + "/Kirvo";
}

ConverterFolder::~ConverterFolder() {
    std::error_code ignored;
    if (!Folder.empty())
        fs::remove_all(Folder, ignored);
    else
        for (const std::string& name : Names)
            unlink(name.c_str());
}

std::string ConverterFolder::NewName(const char* purpose) {
    std::string name = Beginning + purpose + "XXXXXX";
    const int descriptor = mkstemp(name.data());
    if (descriptor >= 0) {
        close(descriptor);
        unlink(name.c_str());
    }
    Names.push_back(name);
    return name;
}

ConverterEnd RunConverter(const ConverterStart& start, const ConverterFolder& folder, int (*step)(double seconds)) {
    ConverterEnd end;
    pid_t process = 0;
    end.NotStarted = SpawnProgramOrScript(process, start, folder);
    if (end.NotStarted)
        return end;
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    const Clock::time_point began = Clock::now();
    while (!HasEnded(process, end)) {
        WaitAMoment(descriptor);
        const double seconds = std::chrono::duration<double>(Clock::now() - began).count();
        if (end.Cancelled || end.TookTooLong)
            continue; // it is dying
        end.TookTooLong = start.TimeLimit > 0 && seconds > start.TimeLimit;
        end.Cancelled = !end.TookTooLong && step && step(seconds);
        if (end.Cancelled || end.TookTooLong)
            kill(-process, SIGKILL);
    }
    if (descriptor >= 0)
        close(descriptor);
    Trace("Converter %s ended with signal %d, status %d\n", start.Program.c_str(), end.Signal, end.Status);
    return end;
}

std::string ConvertFile(const std::string& program, const std::string& from, const std::string& to,
                        const std::string& modelDirectory, ConverterFolder& folder) {
    unlink(folder.ErrorFile().c_str());
    const ConverterEnd end = RunConverter({program, {from, to}, modelDirectory, 0}, folder, nullptr);
    const std::string why = WhyItFailed(end, folder.ErrorFile());
    if (why.empty() && !fs::exists(to))
        return NothingMade;
    return why;
}
