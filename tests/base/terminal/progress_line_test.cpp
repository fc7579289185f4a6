// The progress line, on a terminal and off it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/progress_line.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>

namespace quelm {
namespace {

/// Puts another descriptor in the place of standard error for a while.
class StandardErrorAt {
public:
    explicit StandardErrorAt(int descriptor) : saved_(::dup(STDERR_FILENO))
    {
        ::dup2(descriptor, STDERR_FILENO);
    }
    ~StandardErrorAt()
    {
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
    }

private:
    int saved_;
};

/// True when something can be read.
bool hasText(int descriptor)
{
    pollfd end{descriptor, POLLIN, 0};
    return ::poll(&end, 1, 0) == 1;
}

/// What can be read until a text with this end has come, or half a minute has gone by.
std::string textUpTo(int descriptor, const std::string& end)
{
    std::string text;
    std::array<char, 4096> block{};
    pollfd readable{descriptor, POLLIN, 0};
    while (!text.ends_with(end) && ::poll(&readable, 1, 30000) == 1) {
        const auto size = ::read(descriptor, block.data(), block.size());
        text.append(block.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    return text;
}

TEST(ProgressLine, CountsOnATerminalAndWipesItself)
{
    int screen = -1;
    int terminal = -1;
    ASSERT_EQ(::openpty(&screen, &terminal, nullptr, nullptr, nullptr), 0);
    {
        const StandardErrorAt here(terminal);
        ProgressLine progress("Working");
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!hasText(screen) && std::chrono::steady_clock::now() < deadline)
            progress.show(3, 7);
    }
    const auto text = textUpTo(screen, "3 of 7\r\033[K");
    EXPECT_TRUE(text.starts_with("\r\033[KWorking: 3 of 7")) << text;
    EXPECT_TRUE(text.ends_with("3 of 7\r\033[K")) << text;
    ::close(screen);
    ::close(terminal);
}

TEST(ProgressLine, IsSilentWithoutATerminal)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    {
        const StandardErrorAt here(ends[1]);
        ProgressLine progress("Working");
        // Behind the quiet time of the first half second.
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(700);
        while (std::chrono::steady_clock::now() < end)
            progress.show(3, 7);
    }
    EXPECT_FALSE(hasText(ends[0]));
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace quelm
