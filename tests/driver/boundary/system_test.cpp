// What becomes of a command that the component gives to the system.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/host_state.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr int refused = 127 << 8;

/// An installation whose phonebook program notes its arguments, each in brackets, and a user's folder
/// elsewhere.
class SystemTest : public testing::Test {
protected:
    SystemTest()
    {
        std::filesystem::create_directory(folder / "installation");
        std::filesystem::create_directory(folder / "user");
        installProgram("printf '[%s]' \"$@\" >" + folder / "noted" + "\n");
        state.location = folder / "user";
        state.home = folder / "installation";
    }

    void installProgram(const std::string& script)
    {
        writeFile(folder / "installation/fennodial", "#!/bin/sh\n" + script);
        std::filesystem::permissions(folder / "installation/fennodial", std::filesystem::perms::owner_all);
    }

    int open(const std::string& path)
    {
        return std::system((state.location + "/fennodial -FP " + path).c_str());
    }
    std::string noted() { return contentOf(folder / "noted"); }

    TemporaryFolder folder;
    quelm::HostState state{folder.path(), "ann"};
    LogCapture log;
};

TEST_F(SystemTest, SaysThatThereIsSomebodyToGiveCommandsTo) { EXPECT_EQ(std::system(nullptr), 1); }

class PathForTheProgram : public SystemTest, public testing::WithParamInterface<const char*> {};

TEST_P(PathForTheProgram, IsOneArgumentWhateverItHolds)
{
    EXPECT_EQ(open(GetParam()), 0);
    EXPECT_EQ(noted(), "[-FP][" + std::string(GetParam()) + "]");
    EXPECT_THAT(log.messages, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists("pwned"));
}

INSTANTIATE_TEST_SUITE_P(Paths, PathForTheProgram,
                         testing::Values("/a/b.xdb", "b;touch pwned;.xdb", "$(touch pwned)", "`touch pwned`",
                                         "a  two blanks ", "it's \"quoted\" \\ &|<>*?", "-FP --help",
                                         "Zoë\nline", ""));

TEST_F(SystemTest, TheProgramIsTheInstallationsAndNotWhatLiesInTheUsersFolder)
{
    writeFile(folder / "user/fennodial", "#!/bin/sh\ntouch " + folder / "pwned" + "\n");
    std::filesystem::permissions(folder / "user/fennodial", std::filesystem::perms::owner_all);
    EXPECT_EQ(open("b.xdb"), 0);
    EXPECT_EQ(noted(), "[-FP][b.xdb]");
    EXPECT_FALSE(std::filesystem::exists(folder / "pwned"));
}

TEST_F(SystemTest, AnyOtherCommandIsRefusedAndLogged)
{
    const std::string touched = folder / "touched";
    for (const std::string& command :
         {"touch " + touched, std::string(), state.home + "/fennodial -FP b.xdb",
          state.location + "/fennodial -F " + touched, " " + state.location + "/fennodial -FP b.xdb",
          "touch " + touched + ";" + state.location + "/fennodial -FP b.xdb"}) {
        log.messages.clear();
        EXPECT_EQ(std::system(command.c_str()), refused) << command;
        EXPECT_THAT(log.messages,
                    ElementsAre("a command was not run, as the driver starts nothing but its phonebook "
                                "program: " +
                                command.substr(0, 200)));
    }
    EXPECT_FALSE(std::filesystem::exists(touched));
    EXPECT_EQ(noted(), "");
    log.messages.clear();
    EXPECT_EQ(std::system((std::string(100000, 'x') + "\n").c_str()), refused);
    EXPECT_LT(log.messages.at(0).size(), 400U);
}

TEST_F(SystemTest, TheResultIsThatOfTheProgram)
{
    installProgram("exit 3\n");
    EXPECT_EQ(WEXITSTATUS(open("b.xdb")), 3);
    installProgram("kill -TERM $$\n");
    EXPECT_EQ(WTERMSIG(open("b.xdb")), SIGTERM);
}

TEST_F(SystemTest, AProgramThatCannotBeStartedIsLogged)
{
    std::filesystem::remove(folder / "installation/fennodial");
    EXPECT_EQ(open("b.xdb"), refused);
    EXPECT_THAT(log.messages,
                ElementsAre(StartsWith("the phonebook program " + folder / "installation/fennodial" +
                                       " cannot be started: ")));
}

TEST_F(SystemTest, AFrontEndWaitsInItsOwnWay)
{
    pid_t waitedFor = 0;
    state.waitForProgram = [&](pid_t program) {
        waitedFor = program;
        int status = -1;
        waitpid(program, &status, 0);
        EXPECT_EQ(status, 0);
        return 5 << 8;
    };
    EXPECT_EQ(WEXITSTATUS(open("b.xdb")), 5);
    EXPECT_GT(waitedFor, 0);
    EXPECT_EQ(noted(), "[-FP][b.xdb]");
}

TEST_F(SystemTest, WhatInterruptsTheProgramAtTheTerminalInterruptsTheDriverBehindIt)
{
    // The terminal signals both; the driver lives on until the program has decided.
    installProgram("kill -INT $PPID; kill -INT $$\n");
    EXPECT_EQ(inProcess([&] {
                  open("b.xdb");
                  return 0;
              }),
              128 + SIGINT);
    installProgram("trap 'exit 4' INT; kill -INT $PPID; kill -INT $$\n");
    EXPECT_EQ(inProcess([&] { return WEXITSTATUS(open("b.xdb")); }), 4);
    // Who ignores interruptions lets the program ignore them.
    installProgram("kill -INT $$; exit 6\n");
    EXPECT_EQ(inProcess([&] {
                  std::signal(SIGINT, SIG_IGN);
                  return WEXITSTATUS(open("b.xdb"));
              }),
              6);
}

TEST(SystemWithoutADriver, RefusesEveryCommand)
{
    const LogCapture log;
    EXPECT_EQ(std::system("true"), refused);
    EXPECT_EQ(log.messages.size(), 1U);
}

} // namespace
