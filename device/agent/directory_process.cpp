// Starts a program that the system ends with us.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/directory_process.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/process.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace quelm::device {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int couldNotStart = 127;

/// What the new process does. It may only call what signal handlers may: other threads held locks when it
/// was made, and will never give them back here.
[[noreturn]] void become(char* const* arguments, char* const* environment, int output, pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(couldNotStart);
    ::setsid();
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        ::sigaction(signal, &usual, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    // slapd makes room for as many connections as it may have, which is gigabytes where there is no limit.
    constexpr rlim_t mostDescriptors = 1024;
    const rlimit descriptors{mostDescriptors, mostDescriptors};
    ::setrlimit(RLIMIT_NOFILE, &descriptors);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
    ::execve(arguments[0], arguments, environment);
    ::_exit(couldNotStart);
}

} // namespace

DirectoryProcess::DirectoryProcess(const std::vector<std::string>& arguments,
                                   const std::vector<std::string>& environment, const std::string& outputFile,
                                   std::chrono::milliseconds grace)
    : grace_(grace)
{
    constexpr mode_t ownersAlone = 0600;
    const FileHandle output(
        ::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, ownersAlone));
    if (!output.isOpen())
        throw Error(localized("%s: cannot be written: %s", outputFile, systemReason(errno)));
    const std::vector<char*> words = pointersTo(arguments);
    const std::vector<char*> variables = pointersTo(environment);
    const pid_t parent = ::getpid();
    id_ = ::fork();
    if (id_ == 0)
        become(words.data(), variables.data(), output.get(), parent);
    if (id_ < 0)
        throw Error(
            localized("the program \"%s\" cannot be run: %s", arguments.front(), systemReason(errno)));
    running_ = true;
}

DirectoryProcess::~DirectoryProcess()
{
    if (!isRunning())
        return;
    ::kill(id_, SIGTERM);
    if (endsWithin(grace_))
        return;
    ::kill(id_, SIGKILL);
    while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool DirectoryProcess::isRunning()
{
    // Whatever is not our running child any more has ended.
    if (running_ && ::waitpid(id_, nullptr, WNOHANG) != 0)
        running_ = false;
    return running_;
}

bool DirectoryProcess::endsWithin(std::chrono::milliseconds time)
{
    for (const auto deadline = Clock::now() + time; Clock::now() < deadline; ::poll(nullptr, 0, 1))
        if (!isRunning())
            return true;
    return false;
}

} // namespace quelm::device
