// Tests of how Ghostscript is run: its environment, its folder, its limits and its end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/ghostscript.h"

#include "base/error.h"
#include "tests/driver/jobs/job_support.h"
#include "tests/support/kept_variable.h"
#include "tests/support/processes.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <optional>
#include <thread>

namespace quelm::tests {
namespace {

using Names = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class GhostscriptTest : public JobTest {
protected:
    /// A stand-in for Ghostscript that does what the shell commands say.
    std::string standIn(const std::string& commands) const
    {
        const std::string name = file("stand-in", "#!/bin/sh\n" + commands);
        ::chmod(name.c_str(), 0700);
        return name;
    }

    /// Runs a stand-in; what it wrote to standard output is in `output`.
    ProcessResult runStandIn(const std::string& commands)
    {
        bounds.program = standIn(commands);
        return runGhostscript(bounds, {"an argument"}, streams());
    }

    GhostscriptStreams streams()
    {
        GhostscriptStreams all;
        all.takeOutput = [this](std::string_view bytes) { output += bytes; };
        return all;
    }

    /// What Ghostscript says of a PostScript program.
    std::string messagesOf(const std::string& program)
    {
        return runGhostscript(bounds, {"-q", "-sDEVICE=nullpage", "-c", program}, streams()).errors;
    }

    GhostscriptBounds bounds;
    std::string output;
};

TEST_F(GhostscriptTest, AnswersWithStatusMessagesAndOutput)
{
    const auto result = runStandIn("echo out; echo error >&2; exit 3\n");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.errors, "error\n");
    EXPECT_EQ(output, "out\n");
    EXPECT_EQ(runStandIn("kill -SEGV $$\n").exitStatus, 128 + SIGSEGV);
}

TEST_F(GhostscriptTest, ItIsSafeAndRunsByItself)
{
    runStandIn("for a; do echo \"$a\"; done\n");
    EXPECT_EQ(output, "-dSAFER\n-dBATCH\n-dNOPAUSE\n-dNOPROMPT\n-sstdout=%stderr\nan argument\n");
}

TEST_F(GhostscriptTest, NoVariableOfTheEnvironmentChangesIt)
{
    const KeptVariable options("GS_OPTIONS");
    const KeptVariable library("GS_LIB");
    const KeptVariable temporary("TEMP");
    ::setenv("GS_OPTIONS", "-dNOSAFER", 1);
    ::setenv("GS_LIB", folder().c_str(), 1);
    ::setenv("TEMP", "/elsewhere", 1);
    EXPECT_TRUE(contains(messagesOf("(/etc/passwd) (r) file"), "Error: /invalidfileaccess"));
    runStandIn("env | grep -E '^(GS_|TEMP=/elsewhere)'; echo \"$HOME\"\n");
    EXPECT_EQ(output, std::string(std::getenv("HOME")) + "\n");
}

TEST_F(GhostscriptTest, ItsTemporaryFilesLieInAFolderOfItsOwnWhichGoes)
{
    runStandIn("[ \"$TMPDIR\" = \"$TEMP\" ] && stat -c '%a %n' \"$TMPDIR\"; echo left > \"$TMPDIR/a\"\n");
    EXPECT_TRUE(output.starts_with("700 " + path("quelm-gs-"))) << output;
    EXPECT_EQ(namesInFolder(), Names{"stand-in"});
}

TEST_F(GhostscriptTest, TheLimitsHold)
{
    bounds.memoryLimit = std::uint64_t{1} << 30U;
    bounds.fileLimit = std::uint64_t{1} << 20U;
    bounds.timeLimit = std::chrono::milliseconds(9500);
    runStandIn("ulimit -v; ulimit -f; ulimit -t; ulimit -c\n");
    EXPECT_EQ(output, "1048576\n2048\n11\n0\n") << "in units of the shell's";
}

TEST_F(GhostscriptTest, ALimitThatIsLowerAlreadyStays)
{
    const FileSizeLimit limit(std::uint64_t{1} << 20U);
    runStandIn("ulimit -f\n");
    EXPECT_EQ(output, "2048\n");
}

TEST_F(GhostscriptTest, ADocumentThatTakesAllMemoryFails)
{
    bounds.memoryLimit = std::uint64_t{100} << 20U;
    EXPECT_TRUE(contains(messagesOf("[ { 65000 array } loop"), "Error: /VMerror"));
}

TEST_F(GhostscriptTest, ADocumentThatFillsTheDiskIsEnded)
{
    bounds.fileLimit = 100'000;
    EXPECT_EQ(errorLine([&] {
                  messagesOf("null (w) .tempfile exch pop { dup (a long line for a file) writestring } loop");
              }),
              "the program \"gs\" was ended: in " + folder() +
                  ", the file would exceed the size limit; raise the limit and try again");
    EXPECT_EQ(namesInFolder(), Names{});
}

TEST_F(GhostscriptTest, TheTimeLimitEndsAllThatWasStarted)
{
    bounds.timeLimit = std::chrono::milliseconds(300);
    const std::string line = errorLine(
        [&] { runStandIn("sleep 600 & echo $! > \"" + path("id") + "\"; trap '' TERM; sleep 600\n"); });
    EXPECT_TRUE(contains(line, "stand-in\" was ended: it ran longer than 300 ms")) << line;
    const pid_t id = processIdIn(path("id"));
    EXPECT_TRUE(soon([id] { return !isRunning(id); }));
    EXPECT_EQ(namesInFolder(), (Names{"id", "stand-in"}));
}

TEST_F(GhostscriptTest, ARequestedStopEndsIt)
{
    std::stop_source stop;
    bounds.stop = stop.get_token();
    const std::jthread other([&] {
        processIdIn(path("id"));
        stop.request_stop();
    });
    const std::string line =
        errorLine([&] { runStandIn("echo $$ > \"" + path("id") + "\"; exec sleep 600\n"); });
    EXPECT_TRUE(contains(line, "was stopped")) << line;
    EXPECT_FALSE(isRunning(processIdIn(path("id"))));
    EXPECT_EQ(namesInFolder(), (Names{"id", "stand-in"}));
}

TEST_F(GhostscriptTest, AnOutputThatCannotBeTakenEndsIt)
{
    GhostscriptStreams all;
    all.takeOutput = [](std::string_view) { throw Error("no room"); };
    bounds.program = standIn("echo $$ > \"" + path("id") + "\"; echo out; exec sleep 600\n");
    EXPECT_EQ(errorLine([&] { runGhostscript(bounds, {}, all); }), "no room");
    EXPECT_FALSE(isRunning(processIdIn(path("id"))));
}

TEST_F(GhostscriptTest, AKilledDriverTakesItAlong)
{
    for (const int signal : {SIGKILL, SIGTERM}) {
        std::filesystem::remove(path("id"));
        const pid_t driver = ::fork();
        if (driver == 0) {
            errorLine([&] {
                runStandIn("echo left > \"$TMPDIR/a\"; echo $$ > \"" + path("id") + "\"; exec sleep 600\n");
            });
            ::_exit(0);
        }
        const pid_t id = processIdIn(path("id"));
        ::kill(driver, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(driver, &status, 0), driver);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_TRUE(soon([id] { return !isRunning(id); }));
        EXPECT_TRUE(soon([this] { return namesInFolder() == Names{"id", "stand-in"}; }));
    }
}

TEST_F(GhostscriptTest, AKilledSupervisorTakesItAlongAndTheNextRunClearsUp)
{
    const std::jthread killer([this] {
        // The stand-in's parent.
        processIdIn(path("id"));
        ::kill(processIdIn(path("parent")), SIGKILL);
    });
    const auto result = runStandIn("echo left > \"$TMPDIR/a\"; echo $PPID > \"" + path("parent") +
                                   "\"; echo $$ > \"" + path("id") + "\"; exec sleep 600\n");
    EXPECT_EQ(result.exitStatus, 128 + SIGKILL);
    const pid_t id = processIdIn(path("id"));
    EXPECT_TRUE(soon([id] { return !isRunning(id); }));
    EXPECT_EQ(namesInFolder(), (Names{"id", "parent", "stand-in"}));
}

TEST_F(GhostscriptTest, WhatIsNotInstalledIsNamed)
{
    bounds.program = "quelm-no-such-program";
    EXPECT_EQ(
        errorLine([&] { messagesOf(""); }),
        "Ghostscript, the program \"quelm-no-such-program\", is not installed; install it and try again");
    bounds.program = file("plain", "no program");
    EXPECT_EQ(errorLine([&] { messagesOf(""); }),
              "the program \"" + path("plain") + "\" cannot be run: permission denied");
    bounds.program = file("empty", "");
    ::chmod(bounds.program.c_str(), 0700);
    EXPECT_EQ(errorLine([&] { messagesOf(""); }),
              "the program \"" + path("empty") + "\" cannot be run: Exec format error");
    EXPECT_EQ(namesInFolder(), (Names{"empty", "plain"}));
}

TEST_F(GhostscriptTest, WithoutTheSupervisorTheLineSaysSo)
{
    // Programs look for it beside themselves: a copy of this one, which runs another of its tests, is alone.
    std::filesystem::copy_file("/proc/self/exe", path("alone"));
    ProcessRequest request;
    request.arguments = {path("alone"), "--gtest_filter=GhostscriptTest.ItIsSafeAndRunsByItself"};
    const auto result = runProcess(request);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(contains(result.output,
                         "there is no program " + path("quelm-supervisor") + "; install the driver again"))
        << result.output;
}

} // namespace
} // namespace quelm::tests
