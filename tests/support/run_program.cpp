#include "support/run_program.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Runs between fork and exec: only calls that are safe there.
[[noreturn]] void BecomeProgram(const ProgramStart& start, char** arguments, char** environment, int output,
                                int errors) {
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    if (start.PendingSignal) {
        sigset_t set;
        sigemptyset(&set);
        sigaddset(&set, start.PendingSignal);
        sigprocmask(SIG_BLOCK, &set, nullptr);
        kill(getpid(), start.PendingSignal);
    }
    if (chdir(start.Directory.c_str()) == 0)
        execve(start.Program.c_str(), arguments, environment);
    _exit(127);
}

// Kills a program when its time is up.
class Killer {
  public:
    Killer(pid_t program, std::chrono::milliseconds after) : Program(program), Wanted(after.count() > 0) {
        End = std::chrono::steady_clock::now() + after;
    }

    // How long to wait for anything else, as poll takes it.
    int Timeout() const {
        if (!Wanted)
            return -1;
        const auto left = End - std::chrono::steady_clock::now();
        return static_cast<int>(std::max<long long>(0, std::chrono::ceil<std::chrono::milliseconds>(left).count()));
    }

    void KillWhenDue() {
        if (!Wanted || std::chrono::steady_clock::now() < End)
            return;
        kill(Program, SIGKILL);
        Wanted = false;
    }

  private:
    pid_t Program;
    bool Wanted;
    std::chrono::steady_clock::time_point End;
};

// Reads both streams until the program has closed them.
void Collect(int output, int errors, Killer killer, ProgramEnd& end) {
    pollfd streams[] = {{output, POLLIN, 0}, {errors, POLLIN, 0}};
    std::string* const texts[] = {&end.Output, &end.Errors};
    for (int open = 2; open > 0;) {
        poll(streams, 2, killer.Timeout());
        killer.KillWhenDue();
        for (int i = 0; i < 2; ++i) {
            if (!streams[i].revents)
                continue;
            char buffer[4096];
            const ssize_t count = read(streams[i].fd, buffer, sizeof buffer);
            if (count > 0)
                texts[i]->append(buffer, count);
            else {
                close(streams[i].fd);
                streams[i].fd = -1;
                --open;
            }
        }
    }
}

} // namespace

ProgramEnd RunProgram(const ProgramStart& start) {
    std::vector<std::string> arguments = {start.Name.empty() ? start.Program.string() : start.Name};
    arguments.insert(arguments.end(), start.Arguments.begin(), start.Arguments.end());
    std::vector<std::string> environment;
    for (const auto& [name, value] : start.Environment)
        environment.push_back(name + "=" + value);
    const auto argumentPointers = Pointers(arguments), environmentPointers = Pointers(environment);

    int output[2], errors[2];
    if (pipe2(output, O_CLOEXEC) != 0 || pipe2(errors, O_CLOEXEC) != 0)
        Fail("pipe");
    const pid_t child = fork();
    if (child < 0)
        Fail("fork");
    if (child == 0)
        BecomeProgram(start, const_cast<char**>(argumentPointers.data()),
                      const_cast<char**>(environmentPointers.data()), output[1], errors[1]);
    close(output[1]);
    close(errors[1]);

    ProgramEnd end;
    Collect(output[0], errors[0], Killer(child, start.KillAfter), end);
    int status = 0;
    rusage use{};
    wait4(child, &status, 0, &use);
    const auto seconds = [](const timeval& time) { return static_cast<double>(time.tv_sec) + 1e-6 * time.tv_usec; };
    end.Seconds = seconds(use.ru_utime) + seconds(use.ru_stime);
    end.Megabytes = static_cast<double>(use.ru_maxrss) / 1024;
    if (WIFEXITED(status))
        end.Status = WEXITSTATUS(status);
    else
        end.Signal = WTERMSIG(status);
    if (end.Status == 127)
        throw std::runtime_error("cannot run " + start.Program.string());
    return end;
}
