// Tests of the forms of the lines in which a device says what happens.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/event_lines.h"

#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <ctime>

namespace quelm::device::tests {
namespace {

using Kind = CallResult::Kind;
using std::chrono::milliseconds;
using std::chrono::seconds;

class EventLinesTest : public testing::Test {
protected:
    EventLinesTest()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        call.number = 7;
        call.job = 3;
        call.duration = milliseconds(41499);
    }
    ~EventLinesTest() override { ::tzset(); }

    KeptVariable zone{"TZ"};
    CallRecord call;
};

TEST_F(EventLinesTest, OfJobs)
{
    JobRecord job;
    job.number = 1;
    job.from = "127.0.0.1";
    job.recipients.resize(2);
    EXPECT_EQ(renderedLine(job, 3), "job 1: fax to 2 recipients from 127.0.0.1, 3 pages");
    job.recipients.resize(1);
    EXPECT_EQ(renderedLine(job, 1), "job 1: fax to 1 recipient from 127.0.0.1, 1 page");
    EXPECT_EQ(printedLine(2, 1), "job 2: printed, 1 page");
    EXPECT_EQ(failedLine(2, "it is no\nPostScript"), "job 2: failed: it is no PostScript");
    job.recipients.resize(3);
    job.recipients[1].state = RecipientState::sent;
    job.recipients[2].state = RecipientState::failed;
    EXPECT_EQ(doneLine(job), "job 1: done, 1 of 3 sent");
    EXPECT_EQ(reportLine(1, "job-1.pdf"), "job 1: confirmation sheet job-1.pdf");
    EXPECT_EQ(troubleLine("no room\x1B[2J"), "trouble: no room [2J");
}

TEST_F(EventLinesTest, OfCallsThatFoundNobody)
{
    const Moment moment{seconds(78190)};
    EXPECT_EQ(callLine(call, Kind::busy, "9,555", moment),
              "call 7: job 3, 9,555: busy, 41 s, again at 21:43:10");
    EXPECT_EQ(callLine(call, Kind::noAnswer, "555", moment),
              "call 7: job 3, 555: no answer, 41 s, again at 21:43:10");
    EXPECT_EQ(callLine(call, Kind::busy, "555", {}), "call 7: job 3, 555: busy, 41 s, given up");
    EXPECT_EQ(callLine(call, Kind::cancelled, "555", {}), "call 7: job 3, 555: broken off");
}

TEST_F(EventLinesTest, OfCallsThatCameThrough)
{
    call.result = "the other machine hung up";
    EXPECT_EQ(callLine(call, Kind::failed, "555", {}),
              "call 7: job 3, 555: failed, 41 s: the other machine hung up");
    call.pagesSent = 1;
    call.bitRate = 14400;
    EXPECT_EQ(callLine(call, Kind::failed, "555", {}),
              "call 7: job 3, 555: failed, 1 page, 14400 bit/s, 41 s: the other machine hung up");
    call.pagesSent = 3;
    call.result = "sent";
    EXPECT_EQ(callLine(call, Kind::sent, "555", {}), "call 7: job 3, 555: sent, 3 pages, 14400 bit/s, 41 s");
    call.damagedRows = 2;
    EXPECT_EQ(callLine(call, Kind::sent, "555", {}),
              "call 7: job 3, 555: sent, with damaged lines, 3 pages, 14400 bit/s, 41 s");
}

} // namespace
} // namespace quelm::device::tests
