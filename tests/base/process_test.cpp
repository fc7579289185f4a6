// Programs that are run to their end, within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/process.h"

#include "base/error.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

quelm::ProcessRequest shell(const std::string& script)
{
    quelm::ProcessRequest request;
    request.arguments = {"sh", "-c", script};
    return request;
}

quelm::ProcessResult runShell(const std::string& script) { return quelm::runProcess(shell(script)); }

TEST(MissedEnd, IsNoSuccess)
{
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_NE(runShell("exit 0").exitStatus, 0);
    std::signal(SIGCHLD, SIG_DFL);
}

std::string problemWith(const quelm::ProcessRequest& request)
{
    try {
        quelm::runProcess(request);
    } catch (const quelm::Error& error) {
        return error.what();
    }
    return "";
}

bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class Process : public testing::Test {
protected:
    TemporaryFolder folder;
};

} // namespace

TEST_F(Process, AnswersWithStatusOutputAndErrors)
{
    const auto result = runShell("echo out; echo err >&2; exit 3");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.errors, "err\n");
}

TEST_F(Process, ArgumentsArriveAsTheyStand)
{
    quelm::ProcessRequest request;
    request.arguments = {"printf", "[%s]", "a b", "$HOME; `ls` \"'*", "", "Zoë"};
    EXPECT_EQ(quelm::runProcess(request).output, "[a b][$HOME; `ls` \"'*][][Zoë]");
}

TEST_F(Process, InputIsAFileOrNothing)
{
    auto request = shell("cat");
    EXPECT_EQ(quelm::runProcess(request).output, "");
    request.inputFile = writeFile(folder / "in", "what it reads");
    EXPECT_EQ(quelm::runProcess(request).output, "what it reads");
}

TEST_F(Process, OutputGoesToAFile)
{
    auto request = shell("echo into the file");
    request.outputFile = writeFile(folder / "out", "what was there before, which is longer");
    EXPECT_EQ(quelm::runProcess(request).output, "");
    EXPECT_EQ(contentOf(request.outputFile), "into the file\n");
}

TEST_F(Process, OutputGoesToADescriptorThatStaysOpen)
{
    const std::string path = folder / "out";
    auto request = shell("echo one");
    request.outputDescriptor = open(path.c_str(), O_WRONLY | O_CREAT, 0600);
    quelm::runProcess(request);
    quelm::runProcess(request);
    EXPECT_EQ(close(request.outputDescriptor), 0);
    EXPECT_EQ(contentOf(path), "one\none\n");
}

TEST_F(Process, LargeOutputIsCapturedWhole)
{
    auto request = shell("head -c 1000000 /dev/zero | tr '\\0' x");
    EXPECT_EQ(quelm::runProcess(request).output, std::string(1000000, 'x'));
}

TEST_F(Process, OutputIsTakenPieceByPieceWhateverItsSize)
{
    auto request = shell("head -c 3000000 /dev/zero | tr '\\0' x");
    std::string taken;
    request.takeOutput = [&](std::string_view piece) { taken += piece; };
    EXPECT_EQ(quelm::runProcess(request).output, "");
    EXPECT_EQ(taken, std::string(3000000, 'x'));
}

TEST_F(Process, OutputThatCannotBeTakenEndsTheProgram)
{
    auto request = shell("echo $$ > " + (folder / "id") + "; exec cat /dev/zero");
    request.takeOutput = [](std::string_view) { throw quelm::Error("no room"); };
    EXPECT_EQ(problemWith(request), "no room");
    EXPECT_EQ(kill(std::stoi(contentOf(folder / "id")), 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(Process, TheEnvironmentMayBeAnother)
{
    auto request = shell("/usr/bin/env");
    EXPECT_TRUE(mentions(quelm::runProcess(request).output, "PATH="));
    request.environment = std::vector<std::string>{"ONE=1", "TWO=a b"};
    const std::string output = quelm::runProcess(request).output;
    EXPECT_TRUE(mentions(output, "ONE=1\n") && mentions(output, "TWO=a b\n")) << output;
    EXPECT_FALSE(mentions(output, "HOME=")) << output;
}

TEST_F(Process, AProgramMayHaveAnotherNameInErrorLines)
{
    quelm::ProcessRequest request;
    request.arguments = {"no-such-program-of-ours"};
    request.name = "converter";
    EXPECT_EQ(problemWith(request), "the program \"converter\" is not installed; install it and try again");
    request.arguments = {"sleep", "60"};
    request.timeLimit = milliseconds(10);
    EXPECT_TRUE(mentions(problemWith(request), "the program \"converter\" was ended"));
}

TEST_F(Process, AGraceLetsTheProgramPutThingsInOrder)
{
    auto request = shell("trap 'echo done > " + (folder / "order") + "; exit' TERM; touch " +
                         (folder / "ready") + "; while :; do sleep 0.01; done");
    request.grace = seconds(20);
    std::stop_source stop;
    request.stop = stop.get_token();
    const std::jthread other([&] {
        while (!std::filesystem::exists(folder / "ready"))
            std::this_thread::yield();
        stop.request_stop();
    });
    EXPECT_TRUE(mentions(problemWith(request), "was stopped"));
    EXPECT_EQ(contentOf(folder / "order"), "done\n");
}

TEST_F(Process, BehindItsGraceAProgramIsEnded)
{
    auto request = shell("trap '' TERM; echo $$ > " + (folder / "id") + "; while :; do sleep 0.01; done");
    request.timeLimit = milliseconds(200);
    request.grace = milliseconds(100);
    EXPECT_TRUE(mentions(problemWith(request), "ran longer"));
    EXPECT_EQ(kill(std::stoi(contentOf(folder / "id")), 0), -1);
}

TEST_F(Process, OutputBeyondTheLimitEndsTheProgram)
{
    auto request = shell("echo $$ > " + (folder / "id") + "; exec cat /dev/zero");
    request.outputLimit = 100000;
    EXPECT_EQ(problemWith(request), "the program \"sh\" was ended: it wrote more than 100000 bytes");
    EXPECT_EQ(kill(std::stoi(contentOf(folder / "id")), 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(Process, LastLinesOfTheErrorsAreKept)
{
    const auto result = runShell("i=0; while [ $i -lt 2000 ]; do echo line $i >&2; i=$((i+1)); done");
    EXPECT_LE(result.errors.size(), 4096U);
    EXPECT_EQ(result.errors.find("line "), 0U);
    EXPECT_TRUE(mentions(result.errors, "\nline 1999\n"));
}

TEST_F(Process, AsManyErrorsAreKeptAsAreAskedFor)
{
    auto request = shell("i=0; while [ $i -lt 2000 ]; do echo line $i >&2; i=$((i+1)); done");
    request.errorLimit = std::size_t{1} << 20U;
    const auto result = quelm::runProcess(request);
    EXPECT_EQ(result.errors.find("line 0\n"), 0U);
    EXPECT_TRUE(mentions(result.errors, "\nline 1999\n"));
    request.errorLimit = 20;
    EXPECT_EQ(quelm::runProcess(request).errors, "line 1999\n");
}

TEST_F(Process, TimeLimitEndsTheProgram)
{
    auto request = shell("echo $$ > " + (folder / "id") + "; exec sleep 60");
    request.timeLimit = milliseconds(300);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(mentions(problemWith(request), "was ended: it ran longer than 300 ms"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(20));
    EXPECT_EQ(kill(std::stoi(contentOf(folder / "id")), 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(Process, ARequestedStopEndsTheProgram)
{
    auto request = shell("echo $$ > " + (folder / "id") + "; exec sleep 60");
    std::stop_source stop;
    request.stop = stop.get_token();
    const std::jthread other([&] {
        while (contentOf(folder / "id").empty())
            std::this_thread::yield();
        stop.request_stop();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(mentions(problemWith(request), "was stopped"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(20));
    EXPECT_EQ(kill(std::stoi(contentOf(folder / "id")), 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(Process, TimeLimitHoldsForAProgramThatFloodsItsErrors)
{
    auto request = shell("exec cat /dev/zero >&2");
    request.timeLimit = milliseconds(300);
    EXPECT_TRUE(mentions(problemWith(request), "ran longer"));
}

TEST_F(Process, ProcessLeftBehindIsNotWaitedFor)
{
    auto request = shell("sleep 30 & echo $!");
    const auto start = std::chrono::steady_clock::now();
    const auto result = quelm::runProcess(request);
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(20));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(kill(std::stoi(result.output), SIGKILL), 0);
}

TEST_F(Process, ProgramThatClosesItsPipesIsWaitedFor)
{
    EXPECT_EQ(runShell("exec >&- 2>&-; sleep 0.2; exit 5").exitStatus, 5);
}

TEST_F(Process, EndBySignalIsAStatus) { EXPECT_EQ(runShell("kill -9 $$").exitStatus, 128 + SIGKILL); }

TEST_F(Process, ProgramThatIsNotInstalledIsNamed)
{
    quelm::ProcessRequest request;
    request.arguments = {"no-such-program-of-ours", "x"};
    EXPECT_EQ(problemWith(request),
              "the program \"no-such-program-of-ours\" is not installed; install it and try again");
    request.arguments = {writeFile(folder / "plain", "no program")};
    EXPECT_TRUE(mentions(problemWith(request), "cannot be run: permission denied"));
    request.arguments = {};
    EXPECT_EQ(problemWith(request), "no program was named to run");
}

TEST_F(Process, FilesThatCannotBeOpenedAreNamed)
{
    auto request = shell("echo started > " + (folder / "started"));
    request.inputFile = folder / "none";
    EXPECT_TRUE(mentions(problemWith(request), "\"" + (folder / "none") + "\" cannot be read"));
    request.inputFile.clear();
    request.outputFile = folder / "no/out";
    EXPECT_TRUE(mentions(problemWith(request), "\"" + (folder / "no/out") + "\" cannot be written"));
    EXPECT_FALSE(std::filesystem::exists(folder / "started"));
}

TEST_F(Process, SignalsThatTheDriverIgnoresWorkInThePrograms)
{
    const auto before = std::signal(SIGTERM, SIG_IGN);
    EXPECT_EQ(runShell("kill -TERM $$").exitStatus, 128 + SIGTERM);
    std::signal(SIGTERM, before);
}

TEST_F(Process, NoDescriptorLeaksIntoTheProgram)
{
    const int careless = dup(STDIN_FILENO);
    // What it finds open beside its three streams: the folder that ls itself reads.
    EXPECT_EQ(runShell("ls /proc/self/fd").output, "0\n1\n2\n3\n");
    close(careless);
}
