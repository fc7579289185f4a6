// Tests of the outbox as people read it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_listing.h"

#include "base/clock.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

class OutboxListingTest : public testing::Test {
protected:
    OutboxListingTest()
    {
        job.number = 7;
        job.title = "letter.ps";
        job.target = QueueTarget{"fax"};
        job.recipients.resize(3);
        job.recipients[0].name = "Ann";
        job.recipients[0].number = "555";
        job.queued = job.due = noon;
        job.hasStream = true;
    }

    OutboxJob job;
    const std::time_t noon = momentOf(parseLocalTime("2026-11-22T12:00"));
};

TEST_F(OutboxListingTest, HasALineForEachJobBelowAHeading)
{
    auto handed = job;
    handed.number = 8;
    handed.state = OutboxState::handedOver;
    handed.place = "queue fax, job 12";
    handed.recipients.resize(1);
    handed.ended = noon + 60;
    handed.note = "the queue\nis paused";
    EXPECT_EQ(listedJobs({job, handed}, noon),
              "job  state        time            document   recipients   destination        note\n"
              "7    waiting      today at 12:00  letter.ps  Ann, 2 more  queue fax\n"
              "8    handed over  today at 12:01  letter.ps  Ann          queue fax, job 12  the queue is "
              "paused\n");
    EXPECT_EQ(listedJobs({}, noon), "the outbox is empty\n");
}

TEST_F(OutboxListingTest, EveryStateHasItsWord)
{
    for (const auto& [state, word] : {std::pair{OutboxState::waiting, "waiting"},
                                      {OutboxState::handingOver, "being handed over"},
                                      {OutboxState::handedOver, "handed over"},
                                      {OutboxState::uncertain, "uncertain"},
                                      {OutboxState::failed, "failed"},
                                      {OutboxState::cancelled, "cancelled"}}) {
        job.state = state;
        EXPECT_THAT(listedJobs({job}, noon), HasSubstr(word));
    }
    job.state = OutboxState::waiting;
    EXPECT_THAT(listedJobs({job}, noon + 3601), HasSubstr("overdue"));
    job.state = OutboxState::handedOver;
    job.due = noon + 3600;
    job.ended = noon;
    job.isHeld = true;
    EXPECT_THAT(listedJobs({job}, noon), HasSubstr("held by the queue  today at 13:00"));
    EXPECT_THAT(listedJobs({job}, noon + 3600), HasSubstr("handed over  today at 12:00"));
}

TEST_F(OutboxListingTest, AJobThatItsQueueGotAtOnceIsNotHeldThere)
{
    job.state = OutboxState::handedOver;
    job.due = noon + 3600;
    job.ended = noon;
    EXPECT_THAT(listedJobs({job}, noon), HasSubstr("handed over  today at 12:00"));
    EXPECT_THAT(shownJob(job, noon), Not(HasSubstr("held by the queue")));
}

TEST_F(OutboxListingTest, AJobIsShownWithAllItsRecipientsAndWithoutItsCard)
{
    job.recipients[1].name = "Bob\x1b[2J";
    job.recipients[1].number = "556";
    job.chargesCard = true;
    job.sentBefore = 3;
    job.note = "the device is busy";
    const auto shown = shownJob(job, noon);
    for (const char* part : {"Ann (555)", "Bob", "queue fax", "today at 12:00", "charged", "as job 3",
                             "the device is busy", "kept, without its document"})
        EXPECT_THAT(shown, HasSubstr(part));
    EXPECT_THAT(shown, Not(HasSubstr("\x1b")));
    EXPECT_THAT(shown, Not(HasSubstr("ended")));
    job.hasStream = false;
    EXPECT_THAT(shownJob(job, noon), HasSubstr("not kept"));
}

TEST_F(OutboxListingTest, OnlyAJobThatNeedsAnAnswerAsks)
{
    EXPECT_EQ(questionOf(job, noon), std::nullopt);
    EXPECT_THAT(questionOf(job, noon + 3601).value_or(""), HasSubstr("outbox cancel 7"));
    job.state = OutboxState::uncertain;
    EXPECT_THAT(questionOf(job, noon).value_or(""), HasSubstr("queue fax may have it already"));
    job.state = OutboxState::failed;
    EXPECT_EQ(questionOf(job, noon), std::nullopt);
}

} // namespace
} // namespace quelm
