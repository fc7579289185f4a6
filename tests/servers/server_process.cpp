// Forks, watches and reaps a server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/server_process.h"

#include "tests/servers/loopback.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

extern char** environ;

namespace servers {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void failWithErrno(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// True when the address can be bound. An address family that the machine lacks counts as free.
bool isFree(const sockaddr* address, socklen_t size, int type)
{
    const int trial = socket(address->sa_family, type | SOCK_CLOEXEC, 0);
    if (trial < 0)
        return errno == EAFNOSUPPORT;
    // As servers do: connections that a former server closed a moment ago do not matter.
    const int on = 1;
    setsockopt(trial, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (address->sa_family == AF_INET6)
        setsockopt(trial, IPPROTO_IPV6, IPV6_V6ONLY, &on, sizeof on);
    const bool bound = bind(trial, address, size) == 0;
    const bool absent = !bound && errno == EADDRNOTAVAIL;
    close(trial);
    return bound || absent;
}

bool isFree(int port, int type)
{
    const sockaddr_in v4 = loopback(port);
    sockaddr_in6 v6{};
    v6.sin6_family = AF_INET6;
    v6.sin6_port = v4.sin_port;
    v6.sin6_addr = in6addr_loopback;
    return isFree(reinterpret_cast<const sockaddr*>(&v4), sizeof v4, type) &&
           isFree(reinterpret_cast<const sockaddr*>(&v6), sizeof v6, type);
}

/// The environment with `changes` made.
std::vector<std::string> changedEnvironment(const std::vector<std::string>& changes)
{
    std::vector<std::string> result = changes;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = text.substr(0, text.find('=') + 1);
        if (std::ranges::none_of(changes, [&](const auto& change) { return change.starts_with(name); }))
            result.emplace_back(text);
    }
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

/// Becomes the program; runs in the child, where only system calls are safe.
[[noreturn]] void becomeServer(pid_t parent, char** arguments, char** environment, int output)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() == parent) { // otherwise the parent ended before the line above
        // What this process ignores or blocks must not reach the server.
        struct sigaction defaultAction = {};
        defaultAction.sa_handler = SIG_DFL;
        for (int signal = 1; signal < NSIG; ++signal)
            sigaction(signal, &defaultAction, nullptr);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        const int input = open("/dev/null", O_RDONLY);
        dup2(input, STDIN_FILENO);
        dup2(output, STDOUT_FILENO);
        dup2(output, STDERR_FILENO);
        execve(arguments[0], arguments, environment);
    }
    constexpr int cannotStart = 127;
    _exit(cannotStart);
}

std::string tailOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string all{std::istreambuf_iterator<char>(file), {}};
    constexpr std::size_t most = 2000;
    return all.size() <= most ? all : all.substr(all.size() - most);
}

/// Starts the program as a child that the kernel kills when this thread ends.
pid_t start(const ServerCommand& command)
{
    constexpr mode_t ownerOnly = 0600;
    const int output = open(command.outputFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, ownerOnly);
    if (output < 0)
        failWithErrno("cannot write " + command.outputFile);
    std::vector<std::string> arguments = command.arguments;
    std::vector<std::string> environment = changedEnvironment(command.environment);
    std::vector<char*> argumentPointers = pointers(arguments);
    std::vector<char*> environmentPointers = pointers(environment);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0)
        becomeServer(parent, argumentPointers.data(), environmentPointers.data(), output);
    close(output);
    if (child < 0)
        failWithErrno("cannot start " + command.arguments.front());
    return child;
}

/// A descriptor that becomes readable when the child ends. (The C library's own function for this
/// cannot be linked from C++ in some versions.)
int openProcess(pid_t child) { return static_cast<int>(syscall(SYS_pidfd_open, child, 0)); }

/// Waits until the child ended, at most so long; true when it did.
bool endsWithin(int milliseconds, int childDescriptor)
{
    pollfd end{childDescriptor, POLLIN, 0};
    int answer = 0;
    do {
        answer = poll(&end, 1, milliseconds);
    } while (answer < 0 && errno == EINTR);
    return answer > 0;
}

} // namespace

int unusedPort(Transport transport)
{
    // Below the ports that the kernel gives to clients, so that no connection takes it meanwhile.
    constexpr int first = 20000;
    constexpr int last = 32000;
    static std::mt19937 random{std::random_device{}()};
    std::uniform_int_distribution<int> ports(first, last);
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const int port = ports(random);
        if (isFree(port, transport == Transport::tcp ? SOCK_STREAM : SOCK_DGRAM))
            return port;
    }
    throw std::runtime_error("no free port on the loopback address");
}

std::string systemProgram(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(std::string(path != nullptr ? path : "") +
                               ":/usr/local/sbin:/usr/sbin:/sbin:/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string program = folder + "/" + name;
        if (!folder.empty() && access(program.c_str(), X_OK) == 0)
            return program;
    }
    throw std::runtime_error("the program \"" + name + "\" is not installed");
}

void runProgram(const ServerCommand& command)
{
    const pid_t child = start(command);
    const int descriptor = openProcess(child);
    constexpr int minute = 60000;
    if (descriptor < 0 || !endsWithin(minute, descriptor))
        ::kill(child, SIGKILL);
    int word = 0;
    while (waitpid(child, &word, 0) < 0 && errno == EINTR) {
    }
    close(descriptor);
    if (!WIFEXITED(word) || WEXITSTATUS(word) != 0)
        throw std::runtime_error(command.arguments.front() + " failed:\n" + tailOf(command.outputFile));
}

ServerProcess::ServerProcess(const ServerCommand& command, const std::function<bool()>& ready)
{
    child_ = start(command);
    childDescriptor_ = openProcess(child_);
    if (childDescriptor_ < 0) {
        ::kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
        failWithErrno("cannot watch " + command.arguments.front());
    }

    const auto deadline = Clock::now() + std::chrono::minutes(1);
    constexpr int betweenTries = 5; // milliseconds
    std::string problem;
    try {
        while (!ready() && problem.empty())
            if (waitForEnd(betweenTries))
                problem = " ended instead of serving:\n";
            else if (Clock::now() >= deadline)
                problem = " was not ready within a minute:\n";
    } catch (...) {
        kill();
        throw;
    }
    if (problem.empty())
        return;
    kill();
    throw std::runtime_error(command.arguments.front() + problem + tailOf(command.outputFile));
}

ServerProcess::~ServerProcess() { stop(); }

bool ServerProcess::waitForEnd(int milliseconds) { return endsWithin(milliseconds, childDescriptor_); }

void ServerProcess::reap()
{
    while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
    close(childDescriptor_);
    childDescriptor_ = -1;
}

void ServerProcess::stop()
{
    if (childDescriptor_ < 0)
        return;
    ::kill(child_, SIGTERM);
    ::kill(child_, SIGCONT); // a frozen one could not heed the request
    constexpr int patience = 5000;
    if (!waitForEnd(patience))
        ::kill(child_, SIGKILL);
    reap();
}

void ServerProcess::kill()
{
    if (childDescriptor_ < 0)
        return;
    ::kill(child_, SIGKILL);
    reap();
}

void ServerProcess::freeze()
{
    if (childDescriptor_ < 0)
        return;
    ::kill(child_, SIGSTOP);
    // Until every thread of it stands still.
    int word = 0;
    while (waitpid(child_, &word, WUNTRACED) < 0 && errno == EINTR) {
    }
    if (!WIFSTOPPED(word)) { // it had ended by itself, and is reaped now
        close(childDescriptor_);
        childDescriptor_ = -1;
    }
}

void ServerProcess::thaw()
{
    if (childDescriptor_ >= 0)
        ::kill(child_, SIGCONT);
}

bool ServerProcess::running() { return childDescriptor_ >= 0 && !waitForEnd(0); }

} // namespace servers
