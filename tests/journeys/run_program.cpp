// Fork, exec, and reading both ends until they are closed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/run_program.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace journeys {
namespace {

class End {
public:
    explicit End(int descriptor = -1) : descriptor_(descriptor) {}
    ~End() { close(); }
    End(const End&) = delete;
    End& operator=(const End&) = delete;

    int get() const { return descriptor_; }
    void set(int descriptor) { descriptor_ = descriptor; }
    bool isOpen() const { return descriptor_ >= 0; }
    void close()
    {
        if (isOpen())
            ::close(descriptor_);
        descriptor_ = -1;
    }

private:
    int descriptor_;
};

void require(bool condition, const char* what)
{
    if (!condition)
        throw std::runtime_error(what);
}

struct Channel {
    End ours;
    End theirs;

    void openPipeForReading()
    {
        int ends[2];
        require(::pipe2(ends, O_CLOEXEC) == 0, "pipe");
        ours.set(ends[0]);
        theirs.set(ends[1]);
    }
    void openTerminal()
    {
        int screen = -1;
        int terminal = -1;
        require(::openpty(&screen, &terminal, nullptr, nullptr, nullptr) == 0, "openpty");
        ours.set(screen);
        theirs.set(terminal);
        for (const int end : {screen, terminal})
            ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    void openMessages()
    {
        int ends[2];
        require(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0, "socketpair");
        ours.set(ends[0]);
        theirs.set(ends[1]);
    }
};

void openInput(const std::string& text, End& theirs)
{
    int ends[2];
    require(::pipe2(ends, O_CLOEXEC) == 0, "pipe");
    theirs.set(ends[0]);
    const End ours(ends[1]);
    require(::write(ours.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()), "input");
}

/// `ours` stays open while the program runs: it is the person at the terminal.
void openTerminal(const std::string& text, End& ours, End& theirs)
{
    int screen = -1;
    int terminal = -1;
    require(::openpty(&screen, &terminal, nullptr, nullptr, nullptr) == 0, "openpty");
    ours.set(screen);
    theirs.set(terminal);
    for (const int end : {screen, terminal})
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    require(::write(screen, text.data(), text.size()) == static_cast<ssize_t>(text.size()), "typing");
}

[[noreturn]] void become(const Request& request, int input, int output, int errors)
{
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    for (const int stream : request.withoutStreams)
        ::close(stream);
    ::signal(SIGPIPE, SIG_DFL);
    for (const auto& setting : request.environment) {
        const auto split = setting.find('=');
        ::setenv(setting.substr(0, split).c_str(), setting.substr(split + 1).c_str(), 1);
    }
    std::vector<char*> argv;
    for (const auto& argument : request.arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    ::execvp(argv[0], argv.data());
    ::_exit(127);
}

/// Reads what is there; false at the end.
bool readSome(int descriptor, std::string& text)
{
    thread_local std::array<char, 1 << 20> block;
    const auto size = ::read(descriptor, block.data(), block.size());
    text.assign(block.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    return size > 0;
}

void collect(Result& result, End& output, End& errors, pid_t child, std::size_t killedAfterLines)
{
    std::size_t lines = 0;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(4);
    while (output.isOpen() || errors.isOpen()) {
        std::array<pollfd, 2> ends{{{output.get(), POLLIN, 0}, {errors.get(), POLLIN, 0}}};
        ::poll(ends.data(), ends.size(), 1000);
        std::string text;
        if (ends[0].revents != 0 && !readSome(output.get(), text))
            output.close();
        if (!text.empty()) {
            result.output += text;
            lines += static_cast<std::size_t>(std::ranges::count(text, '\n'));
            if (killedAfterLines != 0 && lines >= killedAfterLines)
                ::kill(child, SIGKILL);
            result.writes.push_back(std::move(text));
            text.clear();
        }
        if (ends[1].revents != 0 && !readSome(errors.get(), text))
            errors.close();
        result.errors += text;
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(child, SIGKILL);
            return;
        }
    }
}

} // namespace

Result runProgram(const Request& request)
{
    End input;
    Channel output;
    Channel errors;
    End person;
    if (request.inputIsTerminal)
        openTerminal(request.input, person, input);
    else
        openInput(request.input, input);
    if (request.errorsAreTerminal)
        errors.openTerminal();
    else
        errors.openPipeForReading();
    if (request.outputIsTerminal) {
        output.openTerminal();
    } else if (request.outputClosed) {
        output.openPipeForReading();
        output.ours.close();
    } else if (request.outputFile.empty()) {
        output.openMessages();
    } else {
        output.theirs.set(::open(request.outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        require(output.theirs.isOpen(), "output file");
    }
    const auto child = ::fork();
    require(child >= 0, "fork");
    if (child == 0)
        become(request, input.get(), output.theirs.get(), errors.theirs.get());
    output.theirs.close();
    errors.theirs.close();
    Result result;
    std::jthread meanwhile([&request, child] {
        if (request.meanwhile)
            request.meanwhile(child);
    });
    collect(result, output.ours, errors.ours, child, request.killedAfterLines);
    meanwhile.join();
    int status = 0;
    require(::waitpid(child, &status, 0) == child, "waitpid");
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

} // namespace journeys
