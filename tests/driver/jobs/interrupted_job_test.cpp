// Jobs that end half-way: what was there before is there afterwards, and nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/output.h"
#include "tests/driver/jobs/job_support.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace quelm::tests {
namespace {

class InterruptedJobTest : public JobTest {
protected:
    InterruptedJobTest()
    {
        session.cover = true;
        file("job.ps", "before");
    }

    void writeJob(const std::string& output)
    {
        const auto destination = openOutput(output, document);
        writeFaxJob(session, document, Pdl::dsc, destination->sink(), someFacts());
        destination->deliver();
    }

    /// Runs `action` in a process of its own, which answers with the line of the error that ended it.
    std::string lineOfChild(const std::function<void()>& action)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            writeAll(ends[1], errorLine(action), "the pipe");
            ::_exit(0);
        }
        ::close(ends[1]);
        const FileHandle reader(ends[0]);
        std::string line(1000, '\0');
        line.resize(readFully(reader.get(), line.data(), line.size(), -1, "the pipe"));
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << "no signal ends it";
        return line;
    }

    void expectEverythingAsBefore() const
    {
        EXPECT_EQ(contentOf(path("job.ps")), "before");
        EXPECT_EQ(namesInFolder(), (std::vector<std::string>{"document.ps", "job.ps"}));
    }

    Document document =
        Document::open(file("document.ps", postScriptPages({"One"}) + std::string(300'000, ' ')));
    FakeFaxSession session;
};

void limitFileSize(rlim_t size)
{
    const rlimit limit{size, size};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(InterruptedJobTest, ADiskThatFillsUpKeepsTheOldFile)
{
    const std::string line = lineOfChild([&] {
        limitFileSize(100'000);
        writeJob(path("job.ps"));
    });
    EXPECT_NE(line.find("job.ps\" cannot be written: the file would exceed the size limit"),
              std::string::npos)
        << line;
    expectEverythingAsBefore();
}

TEST_F(InterruptedJobTest, ADiskThatFillsUpSendsNothingToStandardOutput)
{
    const std::string line = lineOfChild([&] {
        ::dup2(::open(path("job.ps").c_str(), O_WRONLY | O_APPEND), STDOUT_FILENO);
        limitFileSize(100'000);
        writeJob("-");
    });
    EXPECT_EQ(line, "the temporary copy of the job: cannot be written: the file would exceed the size limit; "
                    "raise the limit and try again");
    expectEverythingAsBefore();
}

TEST_F(InterruptedJobTest, AFailingCoverPageKeepsTheOldFile)
{
    session.writesCoverPage = false;
    EXPECT_NE(errorLine([&] { writeJob(path("job.ps")); }), "");
    expectEverythingAsBefore();
}

TEST_F(InterruptedJobTest, ASignalHalfWayLeavesNothingBehind)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        for (const std::string& output : {path("job.ps"), path("new.ps"), std::string("-")}) {
            std::array<int, 2> ends{};
            ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
            const pid_t child = ::fork();
            if (child == 0) {
                session.beforeCoverPage = [&] {
                    writeAll(ends[1], "half-way", "the pipe");
                    for (;;)
                        ::pause();
                };
                writeJob(output);
                ::_exit(0);
            }
            ::close(ends[1]);
            const FileHandle reader(ends[0]);
            std::array<char, 8> word{};
            EXPECT_EQ(readFully(reader.get(), word.data(), word.size(), -1, "the pipe"), word.size());
            ::kill(child, signal);
            int status = 0;
            ASSERT_EQ(::waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
            expectEverythingAsBefore();
        }
    }
}

} // namespace
} // namespace quelm::tests
