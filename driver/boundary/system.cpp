// Answers the component's call of `system`: it starts the phonebook program, and nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/bounded_text.h"
#include "base/log.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quelm {

namespace {

/// What a shell that cannot be run ends with.
constexpr int notRun = 127 << 8;

/// What a terminal's keys end belongs to the program in front, as long as it runs: it may ask whether to end,
/// and this one would be gone without what it has to save.
class TerminalSignals {
public:
    TerminalSignals()
    {
        struct sigaction ignoring {};
        ignoring.sa_handler = SIG_IGN;
        for (std::size_t i = 0; i < signals.size(); ++i)
            sigaction(signals[i], &ignoring, &before_[i]);
    }
    ~TerminalSignals()
    {
        for (std::size_t i = 0; i < signals.size(); ++i)
            sigaction(signals[i], &before_[i], nullptr);
    }
    TerminalSignals(const TerminalSignals&) = delete;
    TerminalSignals& operator=(const TerminalSignals&) = delete;

    /// The signals that a program started meanwhile takes as it would have without this object.
    sigset_t notIgnoredBefore() const
    {
        sigset_t set;
        sigemptyset(&set);
        for (std::size_t i = 0; i < signals.size(); ++i)
            if ((before_[i].sa_flags & SA_SIGINFO) != 0 || before_[i].sa_handler != SIG_IGN)
                sigaddset(&set, signals[i]);
        return set;
    }

private:
    static constexpr std::array<int, 2> signals{SIGINT, SIGQUIT};
    std::array<struct sigaction, 2> before_{};
};

/// The path behind the phonebook program's command, which holds whatever the file is named: nothing in it is
/// a command. Nothing for any other command.
std::optional<std::string> phonebookOf(std::string_view command, const HostState& state)
{
    const std::string program = state.location + "/fennodial -FP ";
    if (!command.starts_with(program))
        return std::nullopt;
    return std::string(command.substr(program.size()));
}

/// Waits without an end. -1 when there is nothing to wait for.
int waitFor(pid_t program)
{
    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(program, &status, 0);
    while (ended < 0 && errno == EINTR);
    return ended == program ? status : -1;
}

/// Starts the phonebook program of the installation on that file; `defaults` are signals that it does not
/// inherit as ignored. Nothing, and the reason is logged, when it cannot be started.
std::optional<pid_t> start(const HostState& state, std::string path, const sigset_t& defaults)
{
    std::string program = state.home + "/fennodial";
    std::string option = "-FP";
    const std::array<char*, 4> arguments{program.data(), option.data(), path.data(), nullptr};
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    pid_t child = -1;
    const int failure = posix_spawn(&child, program.c_str(), nullptr, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (failure == 0)
        return child;
    log(Severity::warning,
        localized("the phonebook program %s cannot be started: %s", program, systemReason(failure)));
    return std::nullopt;
}

int runPhonebookProgram(const HostState& state, std::string path)
{
    if (state.waitForProgram) {
        sigset_t none;
        sigemptyset(&none);
        const auto child = start(state, std::move(path), none);
        return child ? state.waitForProgram(*child) : notRun;
    }
    int status = notRun;
    {
        const TerminalSignals signals;
        if (const auto child = start(state, std::move(path), signals.notIgnoredBefore()))
            status = waitFor(*child);
    }
    // Who interrupted the program at the terminal meant this one, too.
    if (status != -1 && WIFSIGNALED(status) && WTERMSIG(status) == SIGINT)
        raise(SIGINT);
    return status;
}

int answer(const char* command)
{
    const HostState* state = HostState::current();
    if (state != nullptr)
        if (auto path = phonebookOf(command, *state))
            return runPhonebookProgram(*state, *std::move(path));
    constexpr std::size_t longest = 200;
    log(Severity::warning, localized("a command was not run, as the driver starts nothing but its phonebook "
                                     "program: %s",
                                     oneLine(std::string(boundedHead(command, longest)))));
    return notRun;
}

} // namespace

} // namespace quelm

/// In place of the C library's, for the component and whatever else lives in this process. No shell is asked:
/// the component hands over the phonebook's path as it stands, and a file may be named like a command. The
/// result is a status as of waitpid; a command that is refused, and a program that cannot be started, end
/// like a shell that cannot be run.
__attribute__((visibility("default"))) int system(const char* command)
{
    // A null command asks whether there is somebody to give commands to.
    return command == nullptr ? 1 : quelm::atBoundary(quelm::notRun, [&] { return quelm::answer(command); });
}
