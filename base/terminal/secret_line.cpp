// Turns the terminal's echo off and on again.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/secret_line.h"

#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>

namespace quelm {
namespace {

/// The terminal shows nothing of what is typed while it lives.
class EchoOff {
public:
    EchoOff()
    {
        if (::tcgetattr(STDIN_FILENO, &before_) != 0)
            fail();
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        if (::tcsetattr(STDIN_FILENO, TCSANOW, &silent) != 0)
            fail();
    }
    ~EchoOff() { ::tcsetattr(STDIN_FILENO, TCSANOW, &before_); }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

private:
    [[noreturn]] static void fail()
    {
        throw Error(localized("the terminal cannot be told to hide what is typed: %s", systemReason(errno)));
    }

    termios before_{};
};

/// One character at a time, so that what follows the line stays for whoever reads next.
std::optional<std::string> readLine()
{
    std::string line;
    for (;;) {
        constexpr int interval = 100; // milliseconds
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (Interruption::requested())
            return std::nullopt;
        if (::poll(&input, 1, interval) <= 0)
            continue;
        char character = '\0';
        const auto count = ::read(STDIN_FILENO, &character, 1);
        if (count <= 0)
            return line.empty() ? std::nullopt : std::optional(line);
        if (character == '\n')
            return line;
        line += character;
    }
}

} // namespace

bool canAsk() { return ::isatty(STDIN_FILENO) == 1 && !isQuiet(); }

std::optional<std::string> readSecretLine(const std::string& question)
{
    // The signal does what it does once the terminal is as it was.
    const Interruption interruption;
    const EchoOff silent;
    std::cerr << question << std::flush;
    auto line = readLine();
    std::cerr << std::endl; // that of the user was not shown
    return line;
}

} // namespace quelm
