// Tests of the supervisor's own command line; what it does for Ghostscript is tested with that.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/supervision.h"
#include "base/process.h"
#include "tests/driver/jobs/job_support.h"
#include "tests/support/build_paths.h"
#include "tests/support/processes.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace quelm::tests {
namespace {

using Names = std::vector<std::string>;

class SupervisorTest : public JobTest {
protected:
    SupervisorTest() { std::filesystem::create_directory(path("quelm-gs-123456")); }

    /// A command line that runs the shell commands.
    std::vector<std::string> commandLine(pid_t parent, const std::string& folder,
                                         const std::string& commands) const
    {
        return {build_paths::stageFolder() + "/" + supervision::program,
                std::to_string(parent),
                folder,
                "4000000000",
                "4000000000",
                "100",
                "/bin/sh",
                "-c",
                commands};
    }

    static ProcessResult run(const std::vector<std::string>& arguments)
    {
        ProcessRequest request;
        request.arguments = arguments;
        return runProcess(request);
    }
};

TEST_F(SupervisorTest, RunsAProgramAndRemovesItsFolder)
{
    file("quelm-gs-123456/a", "left");
    const auto result = run(commandLine(::getpid(), path("quelm-gs-123456"), "echo out; exit 7"));
    EXPECT_EQ(result.exitStatus, 7);
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(namesInFolder(), Names{});
}

TEST_F(SupervisorTest, RemovesNoFolderThatIsNotOneOfItsOwn)
{
    std::filesystem::create_directory(path("letters"));
    const auto result = run(commandLine(::getpid(), path("letters"), "echo out"));
    EXPECT_EQ(result.exitStatus, supervision::couldNotStart);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "quelm-supervisor is started by the driver, not by hand\n");
    EXPECT_EQ(run({build_paths::stageFolder() + "/" + supervision::program}).errors, result.errors);
    EXPECT_EQ(namesInFolder(), (Names{"letters", "quelm-gs-123456"}));
}

TEST_F(SupervisorTest, StartsNothingForADriverThatIsGone)
{
    const auto result = run(commandLine(::getppid(), path("quelm-gs-123456"), "echo out"));
    EXPECT_EQ(result.exitStatus, supervision::couldNotStart);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(namesInFolder(), Names{});
}

TEST_F(SupervisorTest, ATerminalsSignalsEndTheProgramAndClearUp)
{
    for (const int signal : {SIGINT, SIGHUP, SIGQUIT, SIGTERM}) {
        std::filesystem::remove(path("id"));
        std::filesystem::create_directory(path("quelm-gs-123456"));
        const pid_t supervisor = ::fork();
        if (supervisor == 0) {
            // As a driver may that ignores a signal itself.
            std::signal(signal, SIG_IGN);
            std::signal(SIGCHLD, SIG_IGN);
            const auto arguments = commandLine(::getppid(), path("quelm-gs-123456"),
                                               "echo $$ > '" + path("id") + "'; exec sleep 600");
            const std::vector<char*> pointers = pointersTo(arguments);
            ::execv(pointers.front(), pointers.data());
            ::_exit(1);
        }
        const pid_t id = processIdIn(path("id"));
        ::kill(supervisor, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(supervisor, &status, 0), supervisor);
        EXPECT_EQ(WEXITSTATUS(status), 128 + SIGKILL);
        EXPECT_FALSE(isRunning(id));
        EXPECT_EQ(namesInFolder(), Names{"id"});
    }
}

} // namespace
} // namespace quelm::tests
