// "Open..." on the preferences page: the phonebook program is started, or the dialog tells why it is not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/phonebook_opening.h"

#include "tests/driver/desktop/desktop_fixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// A program that leaves its arguments in a file.
std::string noting(const std::string& file) { return "#!/bin/sh\necho \"$@\" >" + file + "\n"; }

class PhonebookOpeningTest : public DesktopTest {
protected:
    void SetUp() override
    {
        const int nothing = open("/dev/null", O_RDONLY);
        dup2(nothing, STDIN_FILENO);
        close(nothing);
        pathBefore = std::getenv("PATH");
        std::filesystem::create_directory(folder / "programs");
        setenv("PATH", (folder / "programs").c_str(), 1);
        install("home/fennodial", noting(folder / "started"));
        openFaxDialog();
        dialogs->act([this] { driver().choose("Lan Fax TabSet", 2); });
        loopUntilIdle();
    }

    void TearDown() override { setenv("PATH", pathBefore.c_str(), 1); }

    void install(const std::string& program, const std::string& content)
    {
        writeFile(folder / program, content);
        std::filesystem::permissions(folder / program, std::filesystem::perms::owner_all);
    }

    void installTerminal() { install("programs/xterm", "#!/bin/sh\n"); }

    /// What the phonebook program was started with; empty when it was not.
    std::string started() { return contentOf(folder / "started"); }

    void pressAndWait(const std::string& button)
    {
        click(button);
        loopUntilIdle();
    }

    std::string pathBefore;
};

} // namespace

TEST_F(PhonebookOpeningTest, StartsThePhonebookProgramWithTheShownFile)
{
    installTerminal();
    pressAndWait("Open Personal PB Button");
    EXPECT_EQ(message("Lan Fax Window"), "");
    EXPECT_EQ(started(), "-FP " + tree("LanFax Personal PB Name").text() + "\n");
}

TEST_F(PhonebookOpeningTest, WithoutATerminalProgramTheDialogSaysSo)
{
    pressAndWait("Open Personal PB Button");
    EXPECT_EQ(message("Lan Fax Window"),
              "No terminal program is installed to open the phonebook in; install xterm, or run "
              "fennodial at a terminal");
    EXPECT_EQ(started(), "");
    installTerminal();
    pressAndWait("Open Personal PB Button");
    EXPECT_NE(started(), "");
}

TEST_F(PhonebookOpeningTest, WithoutASharedPhonebookTheDialogSaysSo)
{
    installTerminal();
    pressAndWait("Open Shared PB Button");
    EXPECT_EQ(message("Lan Fax Window"), "No shared phonebook is chosen; choose one with \"Select File...\"");
    EXPECT_EQ(started(), "");
}

TEST_F(PhonebookOpeningTest, AFileThatIsGoneIsToldInTheDialog)
{
    installTerminal();
    const std::string file = tree("LanFax Personal PB Name").text();
    std::filesystem::remove(file);
    pressAndWait("Open Personal PB Button");
    EXPECT_EQ(message("Lan Fax Window"),
              "The phonebook \"" + file + "\" cannot be opened: there is no such file; check the name");
    EXPECT_EQ(started(), "");
}

TEST_F(PhonebookOpeningTest, ThePersonalPhonebookOpensThoughDefaultsHaveEmptiedItsField)
{
    installTerminal();
    const std::string file = tree("LanFax Personal PB Name").text();
    dialogs->act([this] { driver().call("LanFaxPrefsTabDefaults"); });
    loopUntilIdle();
    ASSERT_EQ(tree("LanFax Personal PB Name").text(), "");
    pressAndWait("Open Personal PB Button");
    EXPECT_EQ(message("Lan Fax Window"), "");
    EXPECT_EQ(started(), "-FP " + file + "\n");
}
