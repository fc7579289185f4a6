// Tests of jobs that are put into the outbox, listed, cancelled and sent again.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox.h"

#include "base/clock.h"
#include "base/sqlite/sqlite.h"
#include "driver/outbox/outbox_worker.h"
#include "tests/driver/outbox/outbox_support.h"
#include "tests/servers/print_listener.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;
using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(OutboxTest, AJobComesBackAsItWasPutIn)
{
    const OutboxDraft draft = draftFor(QueueTarget{"fax", "localhost:631"}, noon + 60);
    const int number = [&] {
        Outbox outbox = open();
        return put(outbox, draft, "0123456789");
    }();
    const OutboxJob job = jobOf(number);
    EXPECT_EQ(job.number, 1);
    EXPECT_EQ(job.state, OutboxState::waiting);
    EXPECT_EQ(std::get<QueueTarget>(job.target).name, "fax");
    EXPECT_EQ(std::get<QueueTarget>(job.target).server, "localhost:631");
    EXPECT_EQ(job.title, "letter.ps");
    EXPECT_EQ(job.user, "ann");
    EXPECT_EQ(job.recipients, draft.recipients);
    EXPECT_EQ(job.options, draft.options);
    EXPECT_EQ(job.due, noon + 60);
    EXPECT_EQ(job.size, 10);
    EXPECT_TRUE(job.isUnattended);
    EXPECT_TRUE(job.hasStream);
    EXPECT_FALSE(job.chargesCard);
    EXPECT_EQ(job.documentPath, "");
    EXPECT_EQ(job.queued, noon);
    EXPECT_EQ(job.ended, 0);
}

TEST_F(OutboxTest, AJobThatIsNotCommittedLeavesNothing)
{
    Outbox outbox = open();
    outbox.newEntry()->sink().write("half of it");
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(OutboxTest, TheDocumentIsKeptUnderItsNameAndOpensAgain)
{
    const Document document = Document::open(file("A letter.ps", postScriptPages({"One"})));
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(9100)), "the job", &document);
    const Document again = Document::open(outbox.job(number).documentPath);
    EXPECT_EQ(again.name(), "A letter.ps");
    EXPECT_EQ(contentOf(outbox.job(number).documentPath), postScriptPages({"One"}));
}

TEST_F(OutboxTest, EveryFileIsItsOwnersAloneWhateverTheUmaskSays)
{
    const Document document = Document::open(file("letter.ps", postScriptPages({"One"})));
    for (const mode_t mask : {mode_t{0}, mode_t{0777}}) {
        const mode_t before = ::umask(mask);
        {
            Outbox outbox = open();
            put(outbox, draftFor(deviceAt(9100)), streamWithCard(Pdl::dsc, "4929"), &document);
        }
        ::umask(before);
        for (const auto& entry : fs::recursive_directory_iterator(outboxFolder)) {
            struct stat status = {};
            ASSERT_EQ(::lstat(entry.path().c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 07777, S_ISDIR(status.st_mode) ? 0700U : 0600U) << entry.path();
        }
        fs::remove_all(outboxFolder);
    }
}

TEST_F(OutboxTest, NumbersAreNeverUsedAgain)
{
    Outbox outbox = open(0);
    EXPECT_EQ(put(outbox, draftFor(deviceAt(9100))), 1);
    outbox.cancel(1, noon);
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_EQ(put(outbox, draftFor(deviceAt(9100))), 2);
}

TEST_F(OutboxTest, ADeviceGetsTheJobByteForByte)
{
    PrintListener device(Manner::takesAll);
    const std::string stream = bytesOfEveryValue(300'000);
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(device.port())), stream);
    const HandoverEnd end = outbox.handOver(number, noon);
    EXPECT_EQ(end.state, OutboxState::handedOver);
    EXPECT_EQ(end.receipt.place, "device " + device.address());
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_TRUE(device.received() == stream);
    const OutboxJob job = jobOf(number);
    EXPECT_EQ(job.state, OutboxState::handedOver);
    EXPECT_EQ(job.place, "device " + device.address());
    EXPECT_EQ(job.ended, noon);
    EXPECT_TRUE(job.hasStream);
}

TEST_F(OutboxTest, AFileAppearsWhole)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(FileTarget{path("fax.ps")}), "the job");
    EXPECT_EQ(outbox.handOver(number, noon).receipt.place, path("fax.ps"));
    EXPECT_EQ(contentOf(path("fax.ps")), "the job");
    EXPECT_THAT(namesInFolder(), ElementsAre("fax.ps", "state"));
}

TEST_F(OutboxTest, AJobGoesOutOnce)
{
    PrintListener device(Manner::takesAll);
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(device.port())));
    outbox.handOver(number, noon);
    EXPECT_EQ(errorLine([&] { outbox.handOver(number, noon); }),
              "job 1 of the outbox cannot be handed over: it was handed over already");
    EXPECT_EQ(device.connections(), 1);
}

TEST_F(OutboxTest, OneThatFailsIsKeptAndCanBeSentLater)
{
    Outbox outbox = open();
    const std::string output = path("missing/fax.ps");
    const int number = put(outbox, draftFor(FileTarget{output}));
    const HandoverEnd end = outbox.handOver(number, noon);
    EXPECT_EQ(end.state, OutboxState::failed);
    EXPECT_THAT(end.trouble, HasSubstr("missing"));
    EXPECT_EQ(outbox.job(number).state, OutboxState::failed);
    EXPECT_EQ(outbox.job(number).note, end.trouble);
    fs::create_directory(path("missing"));
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::handedOver);
    EXPECT_EQ(contentOf(output), "the job");
    EXPECT_EQ(outbox.job(number).note, "");
}

TEST_F(OutboxTest, OneThatItsOwnProgramSendsIsRemovedWhenItFails)
{
    Outbox outbox = open();
    OutboxDraft draft = draftFor(FileTarget{path("missing/fax.ps")});
    draft.isUnattended = false;
    const int number = put(outbox, draft);
    EXPECT_EQ(outbox.job(number).state, OutboxState::handingOver);
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::failed);
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(OutboxTest, ACancelledJobLosesItsStreamAndItsCard)
{
    Outbox outbox = open();
    const int number = put(outbox, draftFor(deviceAt(9100)), streamWithCard(Pdl::dsc, "4929 1111"));
    outbox.cancel(number, noon);
    EXPECT_EQ(outbox.job(number).state, OutboxState::cancelled);
    EXPECT_FALSE(outbox.job(number).hasStream);
    EXPECT_FALSE(keeps("4929 1111"));
    EXPECT_EQ(errorLine([&] { outbox.cancel(number, noon); }),
              "job 1 of the outbox cannot be cancelled: it was cancelled");
}

TEST_F(OutboxTest, TheCardGoesOutAndIsKeptNoLonger)
{
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        const std::string stream = streamWithCard(pdl, "4929 1111");
        Outbox outbox = open();
        OutboxDraft draft = draftFor(FileTarget{path("fax.ps")});
        draft.pdl = pdl;
        const int number = put(outbox, draft, stream);
        EXPECT_EQ(outbox.job(number).size, stream.size());
        EXPECT_TRUE(outbox.job(number).chargesCard);
        EXPECT_TRUE(keeps("4929 1111"));
        outbox.handOver(number, noon);
        EXPECT_EQ(contentOf(path("fax.ps")), stream);
        EXPECT_FALSE(keeps("4929 1111"));
        EXPECT_TRUE(keeps("OID_ATT_CREDIT_CARD \"555\""));
        EXPECT_TRUE(outbox.job(number).chargesCard);
        EXPECT_EQ(fs::status(path("fax.ps")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
}

TEST_F(OutboxTest, SentAgainTheCardIsBackInItsPlace)
{
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        Outbox outbox = open();
        OutboxDraft draft = draftFor(FileTarget{path("fax.ps")});
        draft.pdl = pdl;
        const int first = put(outbox, draft, streamWithCard(pdl, "4929 1111"));
        outbox.handOver(first, noon);
        const int second = outbox.sendAgain(first, "37-00", noon, false);
        EXPECT_EQ(outbox.job(second).sentBefore, first);
        EXPECT_EQ(outbox.job(second).size, streamWithCard(pdl, "37-00").size());
        outbox.handOver(second, noon);
        EXPECT_EQ(contentOf(path("fax.ps")), streamWithCard(pdl, "37-00"));
        const int third = outbox.sendAgain(second, "", noon, true);
        EXPECT_EQ(outbox.job(third).state, OutboxState::waiting);
        outbox.handOver(third, noon);
        std::string without = streamWithCard(pdl, "");
        const std::string line =
            std::string(pdl == Pdl::dsc ? "%%" : "@PJL COMMENT ") + "OID_ATT_CREDIT_CARD \"\";\r\n";
        without.erase(without.find(line), line.size());
        EXPECT_EQ(contentOf(path("fax.ps")), without);
        EXPECT_FALSE(keeps("37-00"));
    }
}

TEST_F(OutboxTest, ACardThatIsNoneIsRefused)
{
    Outbox outbox = open();
    const int first = put(outbox, draftFor(FileTarget{path("fax.ps")}), streamWithCard(Pdl::dsc, "4929"));
    outbox.handOver(first, noon);
    EXPECT_THAT(errorLine([&] { outbox.sendAgain(first, "1\";\r\n%%OID", noon, true); }),
                HasSubstr("credit card"));
    EXPECT_EQ(outbox.jobs().size(), 1);
}

TEST_F(OutboxTest, SentAgainAJobMayGoElsewhere)
{
    Outbox outbox = open();
    const int first = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    outbox.handOver(first, noon);
    const int second = outbox.sendAgain(first, "", noon, true, FileTarget{path("other.ps")});
    EXPECT_EQ(outbox.handOver(second, noon).receipt.place, path("other.ps"));
    EXPECT_EQ(contentOf(path("other.ps")), "the job");
}

TEST_F(OutboxTest, WhatCouldNotBeReadAgainIsNotPutIn)
{
    Outbox outbox = open();
    EXPECT_EQ(errorLine([&] { put(outbox, draftFor(FileTarget{"fax.ps"})); }),
              "fax.ps: cannot be the destination of a job in the outbox; name a file with its whole path");
    EXPECT_NE(errorLine([&] { put(outbox, draftFor(QueueTarget{""})); }), "");
    EXPECT_NE(errorLine([&] { put(outbox, draftFor(deviceAt(9100), -1)); }), "");
    const int first = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    outbox.handOver(first, noon);
    EXPECT_NE(errorLine([&] { outbox.sendAgain(first, "", noon, true, FileTarget{"-"}); }), "");
    EXPECT_EQ(outbox.jobs().size(), 1);
    EXPECT_THAT(allBelow(outboxFolder),
                ElementsAre("jobs", "jobs/1", "jobs/1/lock", "jobs/1/stream", "log.db", "new"));
}

/// An outbox whose clock runs, with jobs of three days ago: one that was handed over, one that failed and one
/// that waits.
class AgedOutboxTest : public OutboxTest {
protected:
    AgedOutboxTest()
    {
        releaseClock();
        Outbox outbox = open();
        outbox.handOver(put(outbox, draftFor(FileTarget{path("fax.ps")})), threeDaysAgo);
        outbox.handOver(put(outbox, draftFor(FileTarget{path("missing/fax.ps")})), threeDaysAgo);
        put(outbox, draftFor(FileTarget{path("fax.ps")}, now - 100 * day));
    }

    /// Lets the clock have been looked at last at `moment`.
    void wasLookedAtLast(std::time_t moment) const
    {
        const auto log = sqlite::open(outboxFolder + "/log.db", SQLITE_OPEN_READWRITE);
        sqlite::run(log,
                    ("DELETE FROM sweep; INSERT INTO sweep VALUES(" + std::to_string(moment) + ")").c_str());
    }

    /// The numbers that are left when a worker has looked.
    std::vector<int> leftBy(int keepDays) const
    {
        Outbox outbox = open(keepDays);
        OutboxWorker::start({outboxFolder, keepDays}, WorkerKind::command)->sendDue(outbox, now, {}, {});
        std::vector<int> numbers;
        for (const auto& job : open(keepDays).jobs())
            numbers.push_back(job.number);
        return numbers;
    }

    static constexpr std::time_t day = 24 * 3600;
    const std::time_t now = std::time(nullptr);
    const std::time_t threeDaysAgo = now - 3 * day - 60;
};

TEST_F(AgedOutboxTest, WhatIsOlderThanItsDaysGoes)
{
    wasLookedAtLast(now - day - 60);
    EXPECT_THAT(leftBy(2), ElementsAre(1, 2, 3)) << "a day ago it was not that old";
    wasLookedAtLast(now - day);
    EXPECT_THAT(leftBy(3), ElementsAre(1, 2, 3));
    wasLookedAtLast(now - day);
    EXPECT_THAT(leftBy(1), ElementsAre(3)) << "one that waits never goes by itself";
    EXPECT_THAT(allBelow(outboxFolder),
                ElementsAre("jobs", "jobs/3", "jobs/3/lock", "jobs/3/stream", "log.db", "new", "worker"));
}

TEST_F(AgedOutboxTest, PuttingAJobInSweepsToo)
{
    wasLookedAtLast(now - day);
    Outbox outbox = open(1);
    EXPECT_EQ(outbox.jobs().size(), 3) << "to look changes nothing";
    put(outbox, draftFor(FileTarget{path("fax.ps")}));
    EXPECT_EQ(outbox.jobs().size(), 2);
}

TEST_F(AgedOutboxTest, AClockThatJumpsErasesNothing)
{
    // Nobody looked yet; the last look was half a day ago; in what is the future again; years ago.
    EXPECT_THAT(leftBy(1), ElementsAre(1, 2, 3));
    for (const std::time_t last : {now - day / 2, now + 5000 * day, now - 5000 * day}) {
        wasLookedAtLast(last);
        EXPECT_THAT(leftBy(1), ElementsAre(1, 2, 3)) << last - now;
        EXPECT_THAT(leftBy(1), ElementsAre(1, 2, 3)) << "a day has to lie between two looks";
    }
}

TEST_F(AgedOutboxTest, AClockThatStandsStillErasesNothing)
{
    wasLookedAtLast(now - day);
    fixClock(parseLocalTime("2090-01-01T12:00"));
    EXPECT_THAT(leftBy(1), ElementsAre(1, 2, 3));
    releaseClock();
    EXPECT_THAT(leftBy(1), ElementsAre(3)) << "nor did it move the last look";
}

TEST_F(OutboxTest, WithNoDaysWhatWasHandedOverGoesAtOnce)
{
    Outbox outbox = open(0);
    const int number = put(outbox, draftFor(FileTarget{path("fax.ps")}));
    EXPECT_EQ(outbox.handOver(number, noon).state, OutboxState::handedOver);
    EXPECT_THAT(outbox.jobs(), IsEmpty());
    EXPECT_THAT(allBelow(outboxFolder), ElementsAre("jobs", "log.db", "new"));
}

TEST_F(OutboxTest, TheNextMomentIsThatOfTheFirstJobThatStillMayGo)
{
    Outbox outbox = open();
    EXPECT_EQ(outbox.nextDue(noon), std::nullopt);
    put(outbox, draftFor(FileTarget{path("a")}, noon + 500));
    put(outbox, draftFor(FileTarget{path("b")}, noon + 60));
    put(outbox, draftFor(FileTarget{path("c")}, noon - 3601));
    EXPECT_EQ(outbox.nextDue(noon), noon + 60);
    EXPECT_EQ(outbox.nextDue(noon - 1), noon - 3601);
}

TEST_F(OutboxTest, AnUnknownNumberIsRefused)
{
    Outbox outbox = open();
    for (const int number : {1, 0, -1}) {
        const std::string line = "there is no job " + std::to_string(number) + " in the outbox";
        EXPECT_EQ(errorLine([&] { (void)outbox.job(number); }), line);
        EXPECT_EQ(errorLine([&] { outbox.handOver(number, noon); }), line);
        EXPECT_EQ(errorLine([&] { outbox.cancel(number, noon); }), line);
        EXPECT_EQ(errorLine([&] { outbox.sendAgain(number, "", noon, true); }), line);
    }
}

} // namespace
} // namespace quelm::tests
