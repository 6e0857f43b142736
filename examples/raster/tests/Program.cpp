#include "raster/tests/Program"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <utility>

namespace tools::test {

namespace {

/// The two ends of what the program writes into.
struct Channel
{
    int read;
    int write;
};

Channel makePipe()
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

Channel makeTerminal()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        throw std::runtime_error("no terminal");
    }
    return {master, open(ptsname(master), O_RDWR | O_NOCTTY)};
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings, int out,
                                int err)
{
    dup2(surroundings.outputFull ? open("/dev/full", O_WRONLY | O_CLOEXEC) : out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    if (surroundings.fileSizeLimit >= 0) {
        const rlim_t bytes = static_cast<rlim_t>(surroundings.fileSizeLimit);
        const rlimit limit = {bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    std::string program = TOOLS_PROGRAM;
    std::vector<std::string> copies = arguments;
    std::vector<char*> argv = {program.data()};
    for (std::string& argument : copies) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
}

/// Appends what has come; false at the end of the channel.
bool drain(int from, std::string& into)
{
    char block[4096];
    const ssize_t count = read(from, block, sizeof block);
    if (count > 0) {
        into.append(block, static_cast<std::size_t>(count));
    }
    return count > 0;
}

}  // namespace

Outcome runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings)
{
    const Channel out = makePipe();
    Channel err = surroundings.errorsToTerminal ? makeTerminal() : makePipe();
    if (surroundings.errorsUnread) {
        close(std::exchange(err.read, -1));
    }
    const pid_t child = fork();
    if (child == 0) {
        close(out.read);
        close(err.read);
        becomeProgram(arguments, surroundings, out.write, err.write);
    }
    close(out.write);
    close(err.write);

    Outcome outcome = {};
    bool signalled = surroundings.signalOnProgress == 0;
    pollfd ends[] = {{out.read, POLLIN, 0}, {err.read, POLLIN, 0}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        poll(ends, 2, -1);
        if (ends[0].revents != 0 && !drain(out.read, outcome.out)) {
            ends[0].fd = -1;
        }
        if (ends[1].revents != 0 && !drain(err.read, outcome.err)) {
            ends[1].fd = -1;
        }
        if (!signalled && outcome.err.find('%') != std::string::npos) {
            kill(child, surroundings.signalOnProgress);
            signalled = true;
        }
    }
    close(out.read);
    close(err.read);

    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    outcome.peakKilobytes = usage.ru_maxrss;
    return outcome;
}

}  // namespace tools::test
