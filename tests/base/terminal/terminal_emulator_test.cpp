// Which terminal emulator is found, and when one is needed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/terminal_emulator.h"

#include "base/error.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

class TerminalEmulatorTest : public testing::Test {
protected:
    void install(const std::string& program)
    {
        writeFile(folder / program, "#!/bin/sh\n");
        std::filesystem::permissions(folder / program, std::filesystem::perms::owner_all);
    }

    /// What is found when PATH names the folder alone; the reason when nothing is.
    std::string found()
    {
        const std::string before = std::getenv("PATH");
        setenv("PATH", folder.path().c_str(), 1);
        std::string path;
        try {
            path = quelm::terminalEmulator();
        } catch (const quelm::Error& error) {
            path = error.what();
        }
        setenv("PATH", before.c_str(), 1);
        return path;
    }

    /// Whether a process with that standard input and display takes itself for a desktop's.
    static bool isDesktops(const char* input, const char* display)
    {
        return inProcess([input, display] {
                   dup2(open(input, O_RDONLY), STDIN_FILENO);
                   unsetenv("WAYLAND_DISPLAY");
                   setenv("DISPLAY", display, 1);
                   return quelm::isStartedFromDesktop() ? 1 : 0;
               }) == 1;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(TerminalEmulatorTest, TheSystemsChoiceGoesAheadOfXterm)
{
    install("xterm");
    EXPECT_EQ(found(), folder / "xterm");
    install("x-terminal-emulator");
    EXPECT_EQ(found(), folder / "x-terminal-emulator");
}

TEST_F(TerminalEmulatorTest, WithoutOneTheErrorSaysWhatToInstall)
{
    writeFile(folder / "xterm", "no program");
    std::filesystem::permissions(folder / "xterm", std::filesystem::perms::owner_read);
    EXPECT_EQ(found(), "no terminal program is installed to open the phonebook in; install xterm, or run "
                       "fennodial at a terminal");
}

TEST_F(TerminalEmulatorTest, IsNeededWithTheNullDeviceAsInputAndADisplay)
{
    EXPECT_TRUE(isDesktops("/dev/null", ":7"));
    EXPECT_FALSE(isDesktops("/dev/null", ""));
    EXPECT_FALSE(isDesktops("/dev/zero", ":7"));
    EXPECT_FALSE(isDesktops(writeFile(folder / "input", "").c_str(), ":7"));
}
