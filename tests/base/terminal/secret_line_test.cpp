// Tests of asking for what the screen is not to show.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/secret_line.h"

#include "base/file_handle.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Makes `descriptor` a standard stream for its life.
class StandardStream {
public:
    StandardStream(int stream, int descriptor) : stream_(stream), before_(::dup(stream))
    {
        ::dup2(descriptor, stream);
    }
    ~StandardStream() { ::dup2(before_.get(), stream_); }
    StandardStream(const StandardStream&) = delete;
    StandardStream& operator=(const StandardStream&) = delete;

private:
    int stream_;
    FileHandle before_;
};

bool echoes(int terminal)
{
    termios settings{};
    return ::tcgetattr(terminal, &settings) == 0 && (settings.c_lflag & ECHO) != 0;
}

/// What comes onto the screen up to `end`; what came when that never does.
std::string shownUpTo(int screen, const std::string& end)
{
    std::string text;
    pollfd ready{screen, POLLIN, 0};
    constexpr int longest = 10'000; // milliseconds
    while (text.find(end) == std::string::npos && ::poll(&ready, 1, longest) > 0) {
        std::array<char, 256> bytes{};
        const auto count = ::read(screen, bytes.data(), bytes.size());
        if (count <= 0)
            break;
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return text;
}

TEST(SecretLine, IsReadAndNotShown)
{
    int controlling = -1;
    int shown = -1;
    ASSERT_EQ(::openpty(&controlling, &shown, nullptr, nullptr, nullptr), 0);
    const FileHandle screen(controlling);
    const FileHandle terminal(shown);
    std::string onScreen;
    std::optional<std::string> line;
    {
        const StandardStream input(STDIN_FILENO, terminal.get());
        const StandardStream errors(STDERR_FILENO, terminal.get());
        ASSERT_TRUE(canAsk());
        const std::jthread person([&] {
            onScreen = shownUpTo(screen.get(), "Number: ");
            EXPECT_FALSE(echoes(screen.get()));
            EXPECT_EQ(::write(screen.get(), "4111 2345\n", 10), 10);
            onScreen += shownUpTo(screen.get(), "\n");
        });
        line = readSecretLine("Number: ");
    }
    EXPECT_EQ(line, "4111 2345");
    EXPECT_THAT(onScreen, HasSubstr("Number: "));
    EXPECT_THAT(onScreen, Not(HasSubstr("4111")));
    EXPECT_TRUE(echoes(terminal.get())) << "the terminal is as it was";
}

TEST(SecretLine, AtTheEndOfTheInputThereIsNone)
{
    int controlling = -1;
    int shown = -1;
    ASSERT_EQ(::openpty(&controlling, &shown, nullptr, nullptr, nullptr), 0);
    const FileHandle screen(controlling);
    const FileHandle terminal(shown);
    const StandardStream input(STDIN_FILENO, terminal.get());
    const StandardStream errors(STDERR_FILENO, terminal.get());
    ASSERT_EQ(::write(screen.get(), "\x04", 1), 1);
    EXPECT_EQ(readSecretLine("Number: "), std::nullopt);
}

TEST(SecretLine, NobodyCanBeAskedWithoutATerminal)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const FileHandle reading(ends[0]);
    const FileHandle writing(ends[1]);
    const StandardStream input(STDIN_FILENO, reading.get());
    EXPECT_FALSE(canAsk());
}

} // namespace
} // namespace quelm
