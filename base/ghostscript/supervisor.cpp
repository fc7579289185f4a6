// The program quelm-supervisor: runs one program within limits, and clears up whatever ends it or us.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/supervision.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace {

namespace supervision = quelm::supervision;

/// The number of that argument; 0, which is no limit that anything could run in, for what is none.
template <typename Number>
Number numberIn(std::string_view argument)
{
    Number number = 0;
    std::from_chars(argument.data(), argument.data() + argument.size(), number);
    return number;
}

/// What ends the supervised program, and its own end.
sigset_t awaitedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGCHLD}) {
        // A signal that is ignored never comes; children of who ignores SIGCHLD leave no status.
        std::signal(signal, SIG_DFL);
        sigaddset(&signals, signal);
    }
    return signals;
}

/// Lowers a limit; one that is lower already stays.
void limit(int resource, rlim_t most)
{
    rlimit current = {};
    ::getrlimit(static_cast<__rlimit_resource_t>(resource), &current);
    current.rlim_cur = std::min(current.rlim_cur, most);
    current.rlim_max = std::min(current.rlim_max, most);
    ::setrlimit(static_cast<__rlimit_resource_t>(resource), &current);
}

/// Becomes the program.
[[noreturn]] void become(char** arguments, pid_t supervisor)
{
    // It must not outlive a supervisor that is killed, perhaps already was.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != supervisor)
        ::_exit(supervision::couldNotStart);
    // A group of its own: a terminal's signals come to the supervisor, which ends the group.
    ::setpgid(0, 0);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, numberIn<rlim_t>(arguments[supervision::fileLimit]));
    limit(RLIMIT_CPU, numberIn<rlim_t>(arguments[supervision::secondsLimit]));
    limit(RLIMIT_AS, numberIn<rlim_t>(arguments[supervision::memoryLimit]));
    ::execv(arguments[supervision::command], arguments + supervision::command);
    std::fprintf(stderr, "%s\n", std::strerror(errno));
    ::_exit(supervision::couldNotStart);
}

/// Waits until the program has ended by itself or was ended because of a signal; returns its exit status.
int superviseToTheEnd(pid_t child, const sigset_t& signals)
{
    for (siginfo_t end = {}; end.si_pid != child;) {
        const int signal = ::sigwaitinfo(&signals, nullptr);
        if (signal == SIGCHLD)
            ::waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT);
        else if (signal > 0)
            ::kill(child, SIGKILL);
    }
    ::kill(-child, SIGKILL); // what it left behind, while the group's number is still its own
    int status = 0;
    ::waitpid(child, &status, 0);
    constexpr int endedBySignal = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : endedBySignal + WTERMSIG(status);
}

int run(char** arguments)
{
    const sigset_t signals = awaitedSignals();
    ::sigprocmask(SIG_SETMASK, &signals, nullptr);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != numberIn<pid_t>(arguments[supervision::parent]))
        return supervision::couldNotStart;

    const pid_t supervisor = ::getpid();
    const pid_t child = ::fork();
    if (child == 0)
        become(arguments, supervisor);
    if (child < 0) {
        std::fprintf(stderr, "%s\n", std::strerror(errno));
        return supervision::couldNotStart;
    }
    return superviseToTheEnd(child, signals);
}

/// True for the name of a private folder: nothing else is ever removed.
bool isPrivateFolder(const std::filesystem::path& folder)
{
    return folder.filename().string().starts_with(supervision::folderPrefix);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc <= supervision::command || !isPrivateFolder(argv[supervision::folder])) {
        std::fprintf(stderr, "%s is started by the driver, not by hand\n", supervision::program);
        return supervision::couldNotStart;
    }
    // Holding the folder keeps others from taking it for one that was left, when the driver is killed.
    const int folder = ::open(argv[supervision::folder], O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder >= 0)
        ::flock(folder, LOCK_SH);
    const int status = run(argv);
    std::error_code ignored;
    std::filesystem::remove_all(argv[supervision::folder], ignored);
    return status;
}
