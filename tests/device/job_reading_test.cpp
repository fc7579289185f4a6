// Jobs read from files, and their pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/job_reading.h"

#include "base/error.h"
#include "tests/device/stream/sample_jobs.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

namespace quelm::device {
namespace {

using testing::HasSubstr;

class JobReadingTest : public testing::Test {
protected:
    std::string file(const std::string& bytes)
    {
        const auto path = (folder.path() / "job").string();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    TemporaryFolder folder;
};

TEST_F(JobReadingTest, CountsThePagesThatAreDrawn)
{
    const auto jobs = readJobs(file(joined(dscJob())), true);
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(refusalsOf(jobs[0].job), "");
    EXPECT_EQ(jobs[0].pages, 1);
}

TEST_F(JobReadingTest, WithoutDrawingTheyAreNotKnown)
{
    // What a document says of its pages is no count: it may say nothing, or lie.
    const auto jobs = readJobs(file("%!PS-Adobe-3.0\n%%Pages: 7\n%%EndComments\nnosuchoperator\n"), false);
    EXPECT_EQ(refusalsOf(jobs.at(0).job), "");
    EXPECT_EQ(jobs.at(0).pages, std::nullopt);
}

TEST_F(JobReadingTest, ADocumentThatFailsIsRefused)
{
    const auto jobs = readJobs(file(joined(replaced(dscJob(), "Helvetica", "nosuchoperator\n"))), true);
    EXPECT_THAT(refusalsOf(jobs.at(0).job), HasSubstr("0: its document fails: "));
    EXPECT_EQ(jobs.at(0).pages, std::nullopt);
}

TEST_F(JobReadingTest, FindsEachJobOfAFileAndDrawsItsOwnPages)
{
    const auto one = joined(pjlJob());
    const auto two = joined(replaced(pjlJob(), "700 moveto", "showpage showpage\n"));
    const auto jobs = readJobs(file(one + "\r\n" + two + "\r\n"), true);
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0].begin, 0U);
    EXPECT_EQ(jobs[1].begin, one.size());
    EXPECT_EQ(jobs[0].pages, 1);
    EXPECT_EQ(jobs[1].pages, 2);
    EXPECT_EQ(jobs[1].job.destinations.at(0).line, 26U);
    EXPECT_EQ((one + "\r\n" + two).substr(jobs[1].job.postScriptBegin, 14), "%!PS-Adobe-3.0");
}

TEST_F(JobReadingTest, AJobBehindAnotherIsFoundAlsoWithoutAnEnd)
{
    const auto one = joined(dscJob()) + std::string(uel);
    const auto jobs = readJobs(file(one + joined(dscJob())), false);
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(refusalsOf(jobs[0].job) + refusalsOf(jobs[1].job), "");
    EXPECT_EQ(jobs[1].begin, one.size());
    const auto cut = readJobs(file(one + joined(pjlJob()).substr(0, 200)), false);
    ASSERT_EQ(cut.size(), 2U);
    EXPECT_TRUE(cut[1].job.isRefused());
}

TEST_F(JobReadingTest, ReadsAPipe)
{
    const auto path = (folder.path() / "pipe").string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    // Longer than a pipe holds and than one reading takes.
    const auto job = joined(inserted(dscJob(), "Helvetica", std::string(300'000, '\n')));
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << job; });
    const auto jobs = readJobs(path, true);
    writer.join();
    EXPECT_EQ(refusalsOf(jobs.at(0).job), "");
    EXPECT_EQ(jobs.at(0).job.size, job.size());
    EXPECT_EQ(jobs.at(0).pages, 1);
}

TEST_F(JobReadingTest, AnEmptyFileIsAJobThatIsRefused)
{
    const auto jobs = readJobs(file(" \r\n"), true);
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(refusalsOf(jobs[0].job), "0: the job has no document\n");
}

TEST_F(JobReadingTest, WhatCannotBeReadEndsWithItsName)
{
    const auto line = [](const std::string& path) {
        return test::failureLine([&] { static_cast<void>(readJobs(path, true)); });
    };
    EXPECT_THAT(line((folder.path() / "none").string()), HasSubstr("none: cannot be read: "));
    EXPECT_THAT(line(folder.path().string()), HasSubstr("cannot be read: "));
}

} // namespace
} // namespace quelm::device
