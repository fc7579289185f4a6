// Tests of rendering jobs in the device's state.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/job_rendering.h"

#include "tests/device/jobs/state_support.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::HasSubstr;

class JobRenderingTest : public StateTest {
protected:
    JobRenderingTest() { open(); }

    JobRecord addDocument(ReceivedJob reading, const std::string& document)
    {
        const std::string head = "%!PS-Adobe-3.0\n";
        reading.postScriptBegin = 0;
        reading.postScriptEnd = head.size() + document.size();
        return *log->job(add(reading, head + document));
    }
};

TEST_F(JobRenderingTest, AResolutionIsADensity)
{
    EXPECT_EQ(densityOf(Resolution::standard).down, 98);
    EXPECT_EQ(densityOf(Resolution::fine).down, 196);
    EXPECT_EQ(densityOf(Resolution::superfine).down, 391);
    for (const Resolution each : {Resolution::standard, Resolution::fine, Resolution::superfine})
        EXPECT_EQ(densityOf(each).across, 204);
}

TEST_F(JobRenderingTest, AFaxIsRenderedAtItsResolutionToItsPages)
{
    ReceivedJob reading = faxFor({"111"});
    reading.resolution = Resolution::fine;
    const JobRecord job = addDocument(reading, "9 9 99 99 rectfill showpage showpage\n");
    writeFile(folder->pagesFile(1), "left by a device that was killed");
    EXPECT_EQ(renderJob(job, *folder, {}), 2);
    const auto pages = pagesIn(folder->pagesFile(1));
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].width, 1728U);
    EXPECT_EQ(pages[0].down, 196);
    EXPECT_NE(pages[0], pages[1]);
}

TEST_F(JobRenderingTest, AJobThatIsNoFaxIsPrinted)
{
    const JobRecord job = addDocument({}, "showpage\n");
    EXPECT_EQ(renderJob(job, *folder, {}), 1);
    EXPECT_TRUE(fs::exists(folder->printedFile(1)));
    EXPECT_FALSE(fs::exists(folder->pagesFile(1)));
}

TEST_F(JobRenderingTest, WhatIsWrongWithADocumentIsSaid)
{
    const JobRecord job = addDocument(faxFor({"111"}), "showpage boo\n");
    writeFile(folder->pagesFile(1), "left by a device that was killed");
    EXPECT_THAT(failureLine([&] { (void)renderJob(job, *folder, {}); }), HasSubstr("undefined"));
    EXPECT_FALSE(fs::exists(folder->pagesFile(1)));
}

TEST_F(JobRenderingTest, AFullDiskIsNoFaultOfTheDocument)
{
    const JobRecord job = addDocument(faxFor({"111"}), "showpage\n");
    const KeptVariable kept("TMPDIR");
    ::setenv("TMPDIR", "/proc", 1);
    EXPECT_THAT(failureLine<NoRoom>([&] { (void)renderJob(job, *folder, {}); }), HasSubstr("disk is full"));
}

} // namespace
} // namespace quelm::device::tests
