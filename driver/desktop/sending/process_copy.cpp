// Forks, and fetches the result through a pipe.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/process_copy.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <exception>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;

// The first byte of an answer; a copy that died half-way answers without the last byte.
constexpr char result = 'R';
constexpr char failure = 'F';
constexpr char whole = '.';

[[noreturn]] void fail(const std::string& reason)
{
    throw Error(localized("the job cannot be put together: %s", reason));
}

/// The copy of the process. One that still runs is ended with the object.
class Copy {
public:
    explicit Copy(pid_t id) : id_(id) {}
    ~Copy()
    {
        ::kill(id_, SIGKILL);
        while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

private:
    pid_t id_;
};

std::string answerOf(const std::function<std::string()>& work)
{
    try {
        return result + work() + whole;
    } catch (const std::exception& error) {
        return failure + std::string(error.what()) + whole;
    }
}

[[noreturn]] void answerAndEnd(const std::function<std::string()>& work, int pipe)
{
    try {
        writeAll(pipe, answerOf(work), "the pipe of the job");
        ::_exit(0);
    } catch (...) {
        ::_exit(1);
    }
}

std::string readToEnd(int pipe, std::chrono::milliseconds timeLimit)
{
    const auto deadline = Clock::now() + timeLimit;
    std::string text;
    std::array<char, 65536> block;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            fail(localized("the component took too long; try again"));
        pollfd ready{pipe, POLLIN, 0};
        if (::poll(&ready, 1, static_cast<int>(left.count())) <= 0)
            continue;
        const ssize_t count = ::read(pipe, block.data(), block.size());
        if (count == 0)
            return text;
        if (count > 0)
            text.append(block.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR && errno != EAGAIN)
            fail(systemReason(errno));
    }
}

} // namespace

std::string inProcessCopy(const std::function<std::string()>& work, std::chrono::milliseconds timeLimit)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        fail(systemReason(errno));
    const FileHandle readEnd(ends[0]);
    FileHandle writeEnd(ends[1]);
    const pid_t id = ::fork();
    if (id < 0)
        fail(systemReason(errno));
    if (id == 0)
        answerAndEnd(work, writeEnd.get());
    const Copy copy(id);
    writeEnd.close();
    const std::string answer = readToEnd(readEnd.get(), timeLimit);
    if (answer.size() < 2 || answer.back() != whole)
        fail(localized("the component failed"));
    if (answer.front() == failure)
        throw Error(answer.substr(1, answer.size() - 2));
    return answer.substr(1, answer.size() - 2);
}

} // namespace quelm
