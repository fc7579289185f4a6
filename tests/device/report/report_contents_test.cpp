// Tests of what stands on a confirmation sheet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/report/report_contents.h"

#include "tests/device/display/page_support.h"
#include "tests/support/kept_variable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using namespace device;
using ::testing::_;
using ::testing::ElementsAre;

class ReportContentsTest : public ::testing::Test {
protected:
    ReportContentsTest() { setenv("TZ", "UTC0", 1); }

    std::string fact(const std::string& label) const
    {
        for (const auto& fact : reportContents(job, calls).facts)
            if (fact.label == label)
                return fact.value;
        return "(none)";
    }

    KeptVariable zone{"TZ"};
    JobRecord job = sampleJob();
    std::vector<CallRecord> calls = sampleCalls();
};

TEST_F(ReportContentsTest, TheSummarySaysWhatWasAskedForAndWhatBecameOfIt)
{
    const auto contents = reportContents(job, calls);
    EXPECT_EQ(contents.title, "Sample letter");
    EXPECT_EQ(contents.outcome, "sent to 2 of 3 recipients");
    EXPECT_FALSE(contents.complete);
    EXPECT_EQ(fact("Job"), "12");
    EXPECT_EQ(fact("Received"), "2026-11-22 21:43:10");
    EXPECT_EQ(fact("From"), "127.0.0.1:40112");
    EXPECT_EQ(fact("Pages"), "3");
    EXPECT_EQ(fact("Cover sheet"), "yes");
    EXPECT_EQ(fact("Resolution"), "fine (204 x 196 dots per inch)");
    EXPECT_EQ(fact("Speed"), "the fastest (Super G3)");
    EXPECT_EQ(fact("Calls"), "4");
    EXPECT_EQ(fact("Line time"), "2:00");
}

TEST_F(ReportContentsTest, EachRecipientHasARowWithItsLastCall)
{
    const auto rows = reportContents(job, calls).rows;
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_THAT(rows[0].cells,
                ElementsAre("1", "555-010-4477", "2026-11-22 21:44:10", "0:45", "3 of 3", "2"));
    EXPECT_TRUE(rows[0].sent);
    EXPECT_EQ(rows[0].result, "sent");
    EXPECT_THAT(rows[0].details,
                ElementsAre("14400 bit/s, error correction", "the other machine is +1 555 010 4477"));
    EXPECT_THAT(rows[1].details, ElementsAre("mailbox 42", "14400 bit/s, error correction"));
    EXPECT_FALSE(rows[2].sent);
    EXPECT_EQ(rows[2].result, "the other machine hung up (The call dropped prematurely, code 17)");
    EXPECT_EQ(rows[2].cells[4], "1 of 3");
}

TEST_F(ReportContentsTest, WhatTheLineDidToTheFaxIsSaid)
{
    calls[3].repeatedFrames = 1;
    calls[1].damagedRows = 12;
    const auto rows = reportContents(job, calls).rows;
    EXPECT_THAT(rows[0].details, ElementsAre("14400 bit/s, error correction", "1 piece sent again",
                                             "the other machine is +1 555 010 4477"));
    EXPECT_THAT(rows[1].details,
                ElementsAre("mailbox 42", "14400 bit/s, error correction", "12 lines damaged"));
}

TEST_F(ReportContentsTest, TheOrderOfTheCallsDoesNotCount)
{
    const auto rows = reportContents(job, calls).rows;
    std::ranges::reverse(calls);
    EXPECT_EQ(reportContents(job, calls).rows[0].details, rows[0].details);
}

TEST_F(ReportContentsTest, OfACallThatWasBrokenOffAndMadeAgainTheSecondCounts)
{
    CallRecord again = calls[1];
    again.number = 99;
    again.damagedRows = 5;
    calls[1].state = CallState::brokenOff;
    calls.push_back(again);
    for (int order = 0; order < 2; ++order) {
        EXPECT_THAT(reportContents(job, calls).rows[again.position == 1 ? 0 : 1].details,
                    ::testing::Contains("5 lines damaged"));
        std::ranges::reverse(calls);
    }
}

TEST_F(ReportContentsTest, AllRecipientsMakeTheFaxComplete)
{
    job.recipients.pop_back();
    EXPECT_TRUE(reportContents(job, calls).complete);
    EXPECT_EQ(reportContents(job, calls).outcome, "sent to 2 of 2 recipients");
    job.recipients.pop_back();
    EXPECT_EQ(reportContents(job, calls).outcome, "sent to 1 of 1 recipient");
}

TEST_F(ReportContentsTest, ANoteSaysThatACallFellBack)
{
    EXPECT_TRUE(reportContents(job, calls).notes.empty());
    calls[2].fellBack = true;
    ASSERT_EQ(reportContents(job, calls).notes.size(), 1U);
    EXPECT_NE(reportContents(job, calls).notes[0].find("Super G3"), std::string::npos);
}

TEST_F(ReportContentsTest, OfAJobThatFailedNobodyWasCalledAndTheSheetSaysWhy)
{
    job.state = JobState::failed;
    job.problem = "Ghostscript ends with an error:\nundefined";
    job.pages = 0;
    for (auto& recipient : job.recipients) {
        RecipientRecord uncalled;
        uncalled.position = recipient.position;
        uncalled.number = recipient.number;
        uncalled.state = RecipientState::failed;
        recipient = uncalled;
    }
    const auto contents = reportContents(job, {});
    EXPECT_EQ(contents.outcome, "nobody was called");
    EXPECT_FALSE(contents.complete);
    EXPECT_EQ(fact("Problem"), "Ghostscript ends with an error: undefined");
    EXPECT_EQ(fact("Pages"), "-");
    ASSERT_EQ(contents.rows.size(), 3U);
    for (const auto& row : contents.rows) {
        EXPECT_THAT(row.cells, ElementsAre(_, _, "-", "-", "-", "0"));
        EXPECT_EQ(row.result, "not called");
        EXPECT_FALSE(row.sent);
    }
}

TEST_F(ReportContentsTest, ARecipientThatNobodyCalledSaysSo)
{
    job.recipients[0] = {};
    job.recipients[0].number = "555";
    const auto row = reportContents(job, {}).rows[0];
    EXPECT_THAT(row.cells, ElementsAre("0", "555", "-", "-", "0 of 3", "0"));
    EXPECT_EQ(row.result, "waiting");
    EXPECT_TRUE(row.details.empty());
}

} // namespace
} // namespace quelm::tests
