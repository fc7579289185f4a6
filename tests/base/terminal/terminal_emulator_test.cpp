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
#include <vector>

namespace {

/// Which programs are installed, what TERMINAL says, and what then starts "fennodial -FP 'a b'". The first
/// word is the emulator's name without the folder.
struct Choice {
    const char* name;
    std::vector<std::string> programs;
    const char* setting;
    std::vector<std::string> started;
};

class TerminalEmulatorTest : public testing::Test {
protected:
    TerminalEmulatorTest() { unsetenv("TERMINAL"); }

    ~TerminalEmulatorTest() override
    {
        unsetenv("TERMINAL");
        setenv("PATH", before.c_str(), 1);
    }

    void install(const std::string& program) const
    {
        writeFile(folder / program, "#!/bin/sh\n");
        std::filesystem::permissions(folder / program, std::filesystem::perms::owner_all);
    }

    /// What starts the command when PATH names the folder alone; the reason when nothing does.
    std::vector<std::string> started() const
    {
        setenv("PATH", folder.path().c_str(), 1);
        try {
            auto words = quelm::terminalCommand({"fennodial", "-FP", "a b"});
            const std::string folderPrefix = folder / "";
            if (words.front().rfind(folderPrefix, 0) == 0)
                words.front().erase(0, folderPrefix.size());
            return words;
        } catch (const quelm::Error& error) {
            return {error.what()};
        }
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
    const std::string before = std::getenv("PATH");
};

class TerminalChoice : public TerminalEmulatorTest, public testing::WithParamInterface<Choice> {};

std::string nameOf(const testing::TestParamInfo<Choice>& info) { return info.param.name; }

using Words = std::vector<std::string>;

} // namespace

TEST_P(TerminalChoice, StartsTheCommand)
{
    for (const auto& program : GetParam().programs)
        install(program);
    if (GetParam().setting != nullptr)
        setenv("TERMINAL", GetParam().setting, 1);
    EXPECT_EQ(started(), GetParam().started);
}

INSTANTIATE_TEST_SUITE_P(
    EachEmulator, TerminalChoice,
    testing::Values(
        Choice{"Ptyxis", {"ptyxis"}, nullptr, {"ptyxis", "--new-window", "--", "fennodial", "-FP", "a b"}},
        Choice{"Console", {"kgx"}, nullptr, {"kgx", "--", "fennodial", "-FP", "a b"}},
        Choice{"GnomeTerminal",
               {"gnome-terminal"},
               nullptr,
               {"gnome-terminal", "--wait", "--", "fennodial", "-FP", "a b"}},
        Choice{"Konsole", {"konsole"}, nullptr, {"konsole", "-e", "fennodial", "-FP", "a b"}},
        Choice{"XfceTerminal",
               {"xfce4-terminal"},
               nullptr,
               {"xfce4-terminal", "--disable-server", "-x", "fennodial", "-FP", "a b"}},
        Choice{"MateTerminal",
               {"mate-terminal"},
               nullptr,
               {"mate-terminal", "--disable-factory", "-x", "fennodial", "-FP", "a b"}},
        Choice{"QTerminal", {"qterminal"}, nullptr, {"qterminal", "-e", "fennodial", "-FP", "a b"}},
        Choice{"Foot", {"foot"}, nullptr, {"foot", "fennodial", "-FP", "a b"}},
        Choice{"Alacritty", {"alacritty"}, nullptr, {"alacritty", "-e", "fennodial", "-FP", "a b"}},
        Choice{"Kitty", {"kitty"}, nullptr, {"kitty", "fennodial", "-FP", "a b"}},
        Choice{"Urxvt", {"urxvt"}, nullptr, {"urxvt", "-e", "fennodial", "-FP", "a b"}},
        Choice{"Rxvt", {"rxvt"}, nullptr, {"rxvt", "-e", "fennodial", "-FP", "a b"}},
        Choice{"Xterm", {"xterm"}, nullptr, {"xterm", "-e", "fennodial", "-FP", "a b"}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    WhatIsSet, TerminalChoice,
    testing::Values(Choice{"TheMachinesGoesAheadOfWhatIsThere",
                           {"xterm", "gnome-terminal", "x-terminal-emulator"},
                           nullptr,
                           {"x-terminal-emulator", "-e", "fennodial", "-FP", "a b"}},
                    Choice{"TheUsersGoesAheadOfTheMachines",
                           {"xterm", "gnome-terminal", "x-terminal-emulator"},
                           "gnome-terminal",
                           {"gnome-terminal", "--wait", "--", "fennodial", "-FP", "a b"}},
                    Choice{"TheDesktopsGoesAheadOfAll",
                           {"xterm", "x-terminal-emulator", "xdg-terminal-exec"},
                           "xterm",
                           {"xdg-terminal-exec", "fennodial", "-FP", "a b"}},
                    Choice{"AProgramThatNobodyKnowsTakesACommandAsMostDo",
                           {"xterm", "st"},
                           "st",
                           {"st", "-e", "fennodial", "-FP", "a b"}},
                    Choice{"ItsOptionsAreKept",
                           {"xterm"},
                           "xterm -T 'Fax phonebook'",
                           {"xterm", "-T", "Fax phonebook", "-e", "fennodial", "-FP", "a b"}},
                    Choice{"WhatIsNotInstalledIsPassedOver",
                           {"xterm"},
                           "gone",
                           {"xterm", "-e", "fennodial", "-FP", "a b"}},
                    Choice{"AnEmptySettingIsNone", {"xterm"}, "", {"xterm", "-e", "fennodial", "-FP", "a b"}},
                    Choice{"AnUnfinishedSettingIsNone",
                           {"xterm"},
                           "xterm -T 'Fax",
                           {"xterm", "-e", "fennodial", "-FP", "a b"}}),
    nameOf);

TEST_F(TerminalEmulatorTest, TheUsersMayBeNamedByItsPath)
{
    const TemporaryFolder elsewhere;
    const auto program = writeFile(elsewhere / "gnome-terminal", "#!/bin/sh\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    setenv("TERMINAL", program.c_str(), 1);
    EXPECT_EQ(started(), (Words{program, "--wait", "--", "fennodial", "-FP", "a b"}));
}

TEST_F(TerminalEmulatorTest, WithoutOneTheErrorSaysWhatToInstall)
{
    writeFile(folder / "xterm", "no program");
    std::filesystem::permissions(folder / "xterm", std::filesystem::perms::owner_read);
    EXPECT_EQ(started(),
              Words{"no terminal program is installed to open the phonebook in; install xterm, or run "
                    "fennodial at a terminal"});
}

TEST_F(TerminalEmulatorTest, IsNeededWithTheNullDeviceAsInputAndADisplay)
{
    EXPECT_TRUE(isDesktops("/dev/null", ":7"));
    EXPECT_FALSE(isDesktops("/dev/null", ""));
    EXPECT_FALSE(isDesktops("/dev/zero", ":7"));
    EXPECT_FALSE(isDesktops(writeFile(folder / "input", "").c_str(), ":7"));
}
