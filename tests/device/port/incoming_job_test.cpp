// A job's way into the device's folder.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/incoming_job.h"

#include "tests/device/port/sample_jobs.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

namespace quelm::device {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class IncomingJobTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::optional<IncomingJob> job{std::in_place, folder.path(), 10'000};
};

TEST_F(IncomingJobTest, ItsFileComesWithItsFirstByteAndGoesWithIt)
{
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_TRUE(job->isEmpty());
    EXPECT_EQ(job->take("%!"), 2U);
    EXPECT_THAT(folder.names(), SizeIs(1));
    EXPECT_FALSE(job->isEmpty());
    EXPECT_EQ(contentOf(job->file()), "%!");
    job.reset();
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(IncomingJobTest, AFileThatWasMovedAwayStays)
{
    job->take("%!");
    ASSERT_EQ(std::rename(job->file().c_str(), (folder / "kept").c_str()), 0);
    job.reset();
    EXPECT_EQ(contentOf(folder / "kept"), "%!");
}

TEST_F(IncomingJobTest, WhatBelongsToTheNextJobIsNotTaken)
{
    const auto one = test::pjlJob();
    EXPECT_EQ(job->take(one + test::pjlJob()), one.size());
    EXPECT_TRUE(job->isComplete());
    EXPECT_EQ(job->size(), one.size());
    job->writeThrough();
    EXPECT_EQ(contentOf(job->file()), one);
    const auto reading = job->finish();
    EXPECT_FALSE(reading.isRefused());
    EXPECT_EQ(reading.size, one.size());
}

TEST_F(IncomingJobTest, TheLargestJobIsTakenAndNoLargerOne)
{
    job->take("%!\n" + std::string(9'997, '%'));
    EXPECT_EQ(job->size(), 10'000U);
    EXPECT_EQ(test::failureLine([&] { job->take("%"); }),
              "it is larger than 10000 bytes, which is the most that this device takes");
}

TEST_F(IncomingJobTest, AFolderThatIsGoneIsSaid)
{
    IncomingJob lost(folder / "gone", 100);
    EXPECT_THAT(test::failureLine([&] { lost.take("%!"); }),
                StartsWith("it cannot be written to the device's folder: "));
}

TEST_F(IncomingJobTest, ALargeJobArrivesWhole)
{
    IncomingJob large(folder.path(), std::uint64_t{64} << 20U);
    std::string expected;
    for (int i = 0; i < 5; ++i) {
        const std::string block(std::size_t{1} << 20U, static_cast<char>('a' + i));
        large.take("%" + block + "\n");
        expected += "%" + block + "\n";
    }
    large.writeThrough();
    EXPECT_TRUE(contentOf(large.file()) == expected);
}

} // namespace
} // namespace quelm::device
