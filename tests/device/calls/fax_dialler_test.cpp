// Tests of single calls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/fax_dialler.h"

#include "tests/device/jobs/state_support.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using std::chrono::seconds;
using testing::HasSubstr;
using Kind = CallResult::Kind;

class FaxDiallerTest : public StateTest {
protected:
    FaxDiallerTest() { open(); }

    /// A job of one page is due.
    DueCall dueFor(const ReceivedJob& reading)
    {
        const int job = addRendered(reading);
        writePages(folder->pagesFile(job), {samplePage(1)});
        return begin();
    }

    CallEnd call(const DueCall& due, const CallWatch& watch = {}) const
    {
        return makeCall(due, *folder, exchange, "+1 555 010 0000", watch);
    }

    Exchange withFile(const std::string& text) const
    {
        return Exchange(writeFile(outer / "exchange.conf", text));
    }

    Exchange exchange;
};

TEST_F(FaxDiallerTest, WhatWasSentIsKeptAndRemembered)
{
    ReceivedJob reading = faxFor({"9,5550104477"});
    reading.destinations[0].mailbox = "12";
    const DueCall due = dueFor(reading);
    const CallEnd end = call(due);
    EXPECT_EQ(end.kind, Kind::sent);
    EXPECT_EQ(end.record.mailbox, "12");
    EXPECT_EQ(end.record.number, due.call.number);
    EXPECT_EQ(end.record.dialled, "9,5550104477");
    EXPECT_EQ(end.record.receiver, "5550104477");
    EXPECT_EQ(end.record.pagesSent, 1);
    EXPECT_EQ(end.record.pagesKept, 1);
    EXPECT_EQ(end.record.bitRate, 14400);
    EXPECT_EQ(end.record.identity, "5550104477");
    EXPECT_GT(end.record.duration, seconds(5));
    EXPECT_FALSE(end.record.fellBack);
    EXPECT_EQ(pagesIn(folder->incomingCall(1)), pagesIn(folder->pagesFile(1)));
}

TEST_F(FaxDiallerTest, ErrorCorrectionMendsANoisyLine)
{
    exchange = withFile("[number 111]\nnoise = 22\n[number 222]\nnoise = 3\n");
    const CallEnd end = call(dueFor(faxFor({"111"})));
    EXPECT_EQ(end.kind, Kind::sent);
    EXPECT_TRUE(end.record.errorCorrection);
    EXPECT_EQ(end.record.damagedRows, 0);
    EXPECT_EQ(pagesIn(folder->incomingCall(1)), pagesIn(folder->pagesFile(1)));
    EXPECT_EQ(call(dueFor(faxFor({"222"}))).kind, Kind::failed);
}

TEST_F(FaxDiallerTest, AForcedSpeedIsKeptAndSuperG3FallsBack)
{
    ReceivedJob slow = faxFor({"111"});
    slow.speed = Speed::forced4800;
    EXPECT_EQ(call(dueFor(slow)).record.bitRate, 4800);
    ReceivedJob super = faxFor({"222"});
    super.speed = Speed::automatic;
    const CallEnd end = call(dueFor(super));
    EXPECT_EQ(end.record.bitRate, 14400);
    EXPECT_TRUE(end.record.fellBack);
}

TEST_F(FaxDiallerTest, ACardIsDialledBehindThePromptAndShownNowhere)
{
    ReceivedJob reading = faxFor({"9,111"});
    const auto without = call(dueFor(reading)).record.duration;
    reading.destinations[0].number = "9,112"; // as long
    reading.creditCard = "4000-1234";
    const DueCall due = dueFor(reading);
    const CallEnd end = call(due);
    EXPECT_EQ(end.record.dialled, "9,112 ********");
    EXPECT_GT(end.record.duration, without + seconds(1));
    exchange = withFile("[exchange]\ncards = no\n");
    EXPECT_EQ(call(due).record.dialled, "9,112");
}

TEST_F(FaxDiallerTest, NobodyIsReachedWithoutANumber)
{
    const CallEnd end = call(dueFor(faxFor({"**"})));
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.record.result, "there is no such number");
    EXPECT_EQ(end.record.code, -1);
    EXPECT_EQ(end.record.receiver, "");
}

TEST_F(FaxDiallerTest, WhatNobodyWouldDialKeepsNoLine)
{
    const CallEnd number = call(dueFor(faxFor({std::string(100'000, '1')})));
    EXPECT_EQ(number.kind, Kind::failed);
    EXPECT_THAT(number.record.result, HasSubstr("too long"));
    EXPECT_EQ(number.record.duration, seconds(0));
    ReceivedJob reading = faxFor({"111"});
    reading.creditCard = std::string(100'000, '4');
    const CallEnd card = call(dueFor(reading));
    EXPECT_THAT(card.record.result, HasSubstr("too long"));
    EXPECT_EQ(card.record.dialled, "");
}

TEST_F(FaxDiallerTest, OneWhoIsBusyReceivesNothing)
{
    exchange = withFile("[number 111]\nbusy = 1\n");
    const DueCall due = dueFor(faxFor({"111"}));
    writeFile(folder->incomingCall(1), "left by a try that a full disk ended");
    const CallEnd end = call(due);
    EXPECT_EQ(end.kind, Kind::busy);
    EXPECT_EQ(end.record.receiver, "");
    EXPECT_EQ(end.record.bitRate, 0);
    EXPECT_FALSE(fs::exists(folder->incomingCall(1)));
}

TEST_F(FaxDiallerTest, OneWithoutPaperKeepsThePagesThatItHas)
{
    exchange = withFile("[number 111]\npaper-for-pages = 1\n");
    const DueCall due = dueFor(faxFor({"111"}));
    writePages(folder->pagesFile(1), {samplePage(1), samplePage(2)});
    const CallEnd end = call(due);
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.record.receiver, "111");
    EXPECT_EQ(end.record.pagesKept, 1);
    EXPECT_THAT(pagesIn(folder->incomingCall(1)), testing::ElementsAre(samplePage(1)));
}

TEST_F(FaxDiallerTest, TheWatchSeesDiallingAndHangsUp)
{
    const DueCall due = dueFor(faxFor({"5550104477"}));
    std::chrono::milliseconds first{0};
    EXPECT_EQ(call(due,
                   [&](const CallProgress& progress) {
                       first = progress.lineTime;
                       return false;
                   })
                  .kind,
              Kind::cancelled);
    EXPECT_GT(first, seconds(0));
    std::chrono::milliseconds last{0};
    const CallEnd end = call(due, [&](const CallProgress& progress) {
        EXPECT_GE(progress.lineTime, last);
        last = progress.lineTime;
        return last < first + seconds(3);
    });
    EXPECT_EQ(end.kind, Kind::cancelled);
    EXPECT_EQ(call(due).kind, Kind::sent) << "what was left of the former call is in nobody's way";
}

TEST_F(FaxDiallerTest, PagesThatCannotBeReadAreNoFailureOfTheCall)
{
    const DueCall due = dueFor(faxFor({"111"}));
    fs::remove(folder->pagesFile(1));
    EXPECT_THAT(failureLine([&] { (void)call(due); }), HasSubstr("pages.tif"));
}

} // namespace
} // namespace quelm::device::tests
