// The desktop while a phonebook is open in the phonebook program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/program_wait.h"

#include "tests/driver/desktop/desktop_fixture.h"
#include "tests/support/log_capture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {

class ProgramWaitTest : public DesktopTest {
protected:
    void SetUp() override
    {
        driver().setProgramWaiting([this](pid_t program) {
            running = program;
            status = wait.forProgram(program);
            return status;
        });
        ASSERT_EQ(mkfifo((folder / "end").c_str(), 0600), 0);
        const std::string program = writeFile(
            folder / "home/fennodial", "#!/bin/sh\nread -r status <" + folder / "end" + "\nexit $status\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        openFaxDialog();
        dialogs->act([this] { driver().choose("Lan Fax TabSet", 2); });
        loopUntilIdle();
    }

    void endProgram(const std::string& programStatus) { writeFile(folder / "end", programStatus + "\n"); }

    /// Opens the phonebook, and does `meanwhile` from the main loop once the program runs.
    void openPhonebook(std::function<void()> meanwhile)
    {
        dialogs->act([this] { driver().press("Open Personal PB Button"); });
        bool done = false;
        const auto polling = Glib::signal_timeout().connect(
            [&] {
                if (running == 0)
                    return true;
                meanwhile();
                done = true;
                return false;
            },
            1);
        EXPECT_TRUE(loopUntil([&] { return done; }));
    }

    bool sensitive(const std::string& window) { return dialogs->onScreen(tree(window))->is_sensitive(); }

    quelm::ProgramWait wait;
    pid_t running = 0;
    int status = -2;
};

TEST_F(ProgramWaitTest, TheWindowsTakeNothingUntilTheProgramEnds)
{
    auto& field = screen<Gtk::Entry>("LanFax Personal PB Name");
    field.grab_focus();
    openPhonebook([&] {
        EXPECT_FALSE(sensitive("Lan Fax Window"));
        EXPECT_FALSE(sensitive("LanFax OK Button"));
        EXPECT_FALSE(mainWindow.is_sensitive());
        endProgram("3");
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_TRUE(sensitive("Lan Fax Window"));
    EXPECT_TRUE(sensitive("LanFax OK Button"));
    EXPECT_TRUE(mainWindow.is_sensitive());
    EXPECT_EQ(screen<Gtk::Window>("Lan Fax Window").get_focus(), &field);
    EXPECT_EQ(waitpid(running, nullptr, WNOHANG), -1) << "nothing is left behind";
}

TEST_F(ProgramWaitTest, TheMainLoopGoesOnAndWhatIsAskedForMeanwhileIsDoneBehindIt)
{
    bool acted = false;
    bool actedMeanwhile = true;
    int turns = 0;
    openPhonebook([&] {
        dialogs->act([&acted] { acted = true; });
        Glib::signal_timeout().connect(
            [&] {
                if (++turns < 20)
                    return true;
                actedMeanwhile = acted;
                endProgram("0");
                return false;
            },
            1);
    });
    EXPECT_TRUE(loopUntil([&] { return acted; }));
    EXPECT_EQ(turns, 20);
    EXPECT_FALSE(actedMeanwhile);
    EXPECT_EQ(status, 0);
}

TEST_F(ProgramWaitTest, AnInsensitiveWindowStaysSoAndOneThatGoesIsForgotten)
{
    auto passing = std::make_unique<Gtk::Window>();
    passing->show();
    Gtk::Window insensitive;
    insensitive.show();
    insensitive.set_sensitive(false);
    openPhonebook([&] {
        passing.reset();
        endProgram("0");
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(insensitive.is_sensitive());
}

TEST_F(ProgramWaitTest, TheDesktopsEndDoesNotWaitForTheProgram)
{
    openPhonebook([&] { wait.giveUp(); });
    EXPECT_EQ(status, -1);
    EXPECT_TRUE(mainWindow.is_sensitive());
    EXPECT_EQ(kill(running, 0), 0) << "the program goes on";
    endProgram("0");
    EXPECT_EQ(waitpid(running, nullptr, 0), running);
    wait.giveUp(); // with nothing to give up
}

TEST_F(ProgramWaitTest, AProgramThatIsKilledEndsTheWaiting)
{
    openPhonebook([&] { kill(running, SIGKILL); });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
}

} // namespace
