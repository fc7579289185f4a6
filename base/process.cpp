// Spawns a program, feeds and drains its pipes, and sees to it that it ends.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/process.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

extern char** environ;

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

[[noreturn]] void cannotRun(const std::string& program, const std::string& reason)
{
    throw Error(localized("the program \"%s\" cannot be run: %s", program, reason));
}

struct Pipe {
    FileHandle readEnd;
    FileHandle writeEnd;

    explicit Pipe(const std::string& program)
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            cannotRun(program, systemReason(errno));
        readEnd = FileHandle(ends[0]);
        writeEnd = FileHandle(ends[1]);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
    }
};

/// Of a program whose end was missed; no success.
constexpr int unknownStatus = 255;

/// A child process. Its destructor ends one that still runs.
class Child {
public:
    Child(const ProcessRequest& request, const std::string& name, int input, int output, int errors)
        : grace_(request.grace)
    {
        const std::string& program = request.arguments.front();
        posix_spawn_file_actions_t actions;
        posix_spawnattr_t attributes;
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
        // Descriptors of libraries that do not close them themselves.
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        // What the driver ignores or handles means nothing to another program.
        sigset_t defaults;
        sigfillset(&defaults);
        posix_spawnattr_setsigdefault(&attributes, &defaults);
        sigset_t unblocked;
        sigemptyset(&unblocked);
        posix_spawnattr_setsigmask(&attributes, &unblocked);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        const std::vector<char*> arguments = pointersTo(request.arguments);
        std::vector<char*> environment;
        if (request.environment)
            environment = pointersTo(*request.environment);
        const int error = posix_spawnp(&id_, program.c_str(), &actions, &attributes, arguments.data(),
                                       request.environment ? environment.data() : environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) {
            id_ = -1;
            if (error == ENOENT)
                throw Error(localized("the program \"%s\" is not installed; install it and try again", name));
            cannotRun(name, systemReason(error));
        }
    }
    ~Child()
    {
        if (id_ <= 0 || (grace_ > milliseconds(0) && endsItself()))
            return;
        kill(id_, SIGKILL);
        while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// True once the program ended; `status` is then its exit status.
    bool ended(int& status)
    {
        int word = 0;
        const pid_t waited = waitpid(id_, &word, WNOHANG);
        if (waited < 0 && errno == ECHILD) {
            // Somebody else, or the system where SIGCHLD is ignored, took its end: how it went nobody knows.
            id_ = -1;
            status = unknownStatus;
            return true;
        }
        if (waited != id_)
            return false;
        id_ = -1;
        constexpr int killedBySignal = 128;
        status = WIFEXITED(word) ? WEXITSTATUS(word) : killedBySignal + WTERMSIG(word);
        return true;
    }

private:
    /// True when SIGTERM ends it within its grace.
    bool endsItself()
    {
        kill(id_, SIGTERM);
        int status = 0;
        for (const auto deadline = Clock::now() + grace_; Clock::now() < deadline;
             poll(nullptr, 0, 1)) // a millisecond
            if (ended(status))
                return true;
        return false;
    }

    milliseconds grace_;
    pid_t id_ = -1;
};

/// Hands on what the pipe holds now and closes it at its end. False once `take` takes no more.
bool drain(FileHandle& pipe, const std::function<bool(std::string_view)>& take)
{
    std::array<char, 16384> chunk;
    // Bounded, because a program may write faster than we read; more than a pipe holds at once.
    for (int chunks = 0; pipe.isOpen() && chunks < 128; ++chunks) {
        const ssize_t got = read(pipe.get(), chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 && errno == EAGAIN)
            break;
        if (got <= 0) {
            pipe.close();
            break;
        }
        if (!take({chunk.data(), static_cast<std::size_t>(got)}))
            return false;
    }
    return true;
}

/// Keeps the last `limit` bytes of a text that comes in pieces, and up to as many more meanwhile, so that
/// pieces need not be moved each time.
void keepEnd(std::string& text, std::string_view piece, std::size_t limit)
{
    text += piece;
    if (text.size() > 2 * limit)
        text.erase(0, text.size() - limit);
}

/// Waits until a pipe has something to read or was closed, at most for `longest`.
void waitForPipes(const FileHandle& output, const FileHandle& errors, milliseconds longest)
{
    // A negative descriptor is passed over.
    std::array<pollfd, 2> pipes{{{output.get(), POLLIN, 0}, {errors.get(), POLLIN, 0}}};
    poll(pipes.data(), pipes.size(), static_cast<int>(longest.count()));
}

/// `failure` is a text for the path and the reason.
FileHandle openFile(const std::string& program, const std::string& path, int flags, const char* failure)
{
    constexpr mode_t readAndWrite = 0666;
    FileHandle file(open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, readAndWrite));
    if (!file.isOpen())
        cannotRun(program, localized(failure, path, systemReason(errno)));
    return file;
}

/// Keeps the last `limit` bytes, without the part of a line that this leaves at the front.
void startAtLine(std::string& errors, std::size_t limit)
{
    if (errors.size() < limit)
        return;
    errors.erase(0, errors.size() - limit);
    const std::size_t lineEnd = errors.find('\n');
    if (lineEnd != std::string::npos && lineEnd + 1 < errors.size())
        errors.erase(0, lineEnd + 1);
}

} // namespace

std::vector<char*> pointersTo(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

ProcessResult runProcess(const ProcessRequest& request)
{
    if (request.arguments.empty() || request.arguments.front().empty())
        throw Error(localized("no program was named to run"));
    const std::string& program = request.name.empty() ? request.arguments.front() : request.name;
    const FileHandle input = openFile(program, request.inputFile.empty() ? "/dev/null" : request.inputFile,
                                      O_RDONLY, forTranslation("\"%s\" cannot be read: %s"));
    Pipe errorPipe(program);
    Pipe outputPipe(program);
    int output = request.outputDescriptor;
    if (!request.outputFile.empty())
        outputPipe.writeEnd = openFile(program, request.outputFile, O_WRONLY | O_CREAT | O_TRUNC,
                                       forTranslation("\"%s\" cannot be written: %s"));
    if (output < 0)
        output = outputPipe.writeEnd.get();
    if (!request.outputFile.empty() || request.outputDescriptor >= 0)
        outputPipe.readEnd.close(); // nothing is captured

    const auto deadline = Clock::now() + request.timeLimit;
    Child child(request, program, input.get(), output, errorPipe.writeEnd.get());
    outputPipe.writeEnd.close();
    errorPipe.writeEnd.close();

    ProcessResult result;
    const auto takeOutput = [&](std::string_view piece) {
        if (request.takeOutput)
            request.takeOutput(piece);
        else
            result.output += piece;
        return result.output.size() <= request.outputLimit;
    };
    const auto takeErrors = [&](std::string_view piece) {
        keepEnd(result.errors, piece, request.errorLimit);
        return true;
    };
    // Pipes normally close when the program ends, which wakes the wait. The bound on a wait
    // covers programs that close them early, or leave a process behind that keeps them open.
    for (milliseconds pause(1);; pause = std::min(pause * 2, milliseconds(50))) {
        const bool ended = child.ended(result.exitStatus);
        if (!drain(outputPipe.readEnd, takeOutput))
            throw Error(localized("the program \"%s\" was ended: it wrote more than %d bytes", program,
                                  request.outputLimit));
        drain(errorPipe.readEnd, takeErrors);
        if (ended)
            break;
        if (request.stop.stop_requested())
            throw Error(localized("the program \"%s\" was stopped", program));
        if (Clock::now() >= deadline)
            throw Error(
                localized("the program \"%s\" was ended: it ran longer than %d ms; try a smaller document",
                          program, request.timeLimit.count()));
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        waitForPipes(outputPipe.readEnd, errorPipe.readEnd, std::clamp(left, milliseconds(0), pause));
    }
    startAtLine(result.errors, request.errorLimit);
    return result;
}

} // namespace quelm
