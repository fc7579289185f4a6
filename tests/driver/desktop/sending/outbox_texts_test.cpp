// Tests of what the main window says of jobs in the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/outbox_texts.h"

#include "base/clock.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class OutboxTextsTest : public testing::Test {
protected:
    OutboxTextsTest()
    {
        job.number = 7;
        job.title = "letter.ps";
        job.target = NetworkAddress{"fax.example", 9100};
        job.recipients.resize(2);
        job.recipients[0].name = "Ann";
        job.recipients[0].number = "555-1231";
        job.recipients[1].name = "Bob";
        job.recipients[1].number = "555-1232";
        job.due = momentOf(parseLocalTime("2024-03-05T04:05"));
    }

    /// All that is ever said.
    std::vector<std::string> all() const
    {
        std::vector<std::string> texts;
        for (const auto state : {OutboxState::handedOver, OutboxState::failed, OutboxState::uncertain})
            texts.push_back(endedText(job, {state, {"device fax.example:9100", {}, 0}, "it is off"}));
        return texts;
    }

    OutboxJob job;
    const std::time_t now = momentOf(parseLocalTime("2024-03-05T14:07"));
};

TEST_F(OutboxTextsTest, AJobThatWasHandedOverIsToldWithItsPlace)
{
    EXPECT_EQ(endedText(job, {OutboxState::handedOver, {"device fax.example:9100", {}, 0}, {}}),
              "The fax job of letter.ps for 2 recipients was handed over to device fax.example:9100.");
    job.target = QueueTarget{"fax"};
    EXPECT_EQ(endedText(job, {OutboxState::handedOver, {"queue fax, job 3", "the queue is paused", 3}, {}}),
              "The fax job of letter.ps for 2 recipients was handed over to queue fax, job 3; the queue is "
              "paused.");
    job.target = FileTarget{"/home/ann/fax.job"};
    EXPECT_EQ(endedText(job, {OutboxState::handedOver, {"/home/ann/fax.job", {}, 0}, {}}),
              "The fax job of letter.ps for 2 recipients was written to /home/ann/fax.job.");
}

TEST_F(OutboxTextsTest, OtherEndsSayWhyAndWhatToDo)
{
    EXPECT_EQ(
        endedText(job, {OutboxState::failed, {}, "device fax.example:9100: it is off"}),
        "The fax job of letter.ps was not handed over: device fax.example:9100: it is off. Send it again "
        "with \"quelm-driver outbox send 7\".");
    EXPECT_EQ(endedText(job, {OutboxState::uncertain, {}, "it broke off"}),
              "Whether the fax job of letter.ps went out is not known: it broke off. Look at it with "
              "\"quelm-driver outbox show 7\".");
    job.state = OutboxState::uncertain;
    job.note = "its program ended";
    EXPECT_THAT(settledText(job), AllOf(HasSubstr("not known: its program ended."), HasSubstr("show 7")));
    job.state = OutboxState::failed;
    EXPECT_THAT(settledText(job),
                AllOf(HasSubstr("not handed over: its program ended."), HasSubstr("send 7")));
}

TEST_F(OutboxTextsTest, NothingIsEverCalledDelivered)
{
    for (const auto& text : all())
        EXPECT_THAT(text, AllOf(Not(HasSubstr("delivered")), Not(HasSubstr("success")))) << text;
}

TEST_F(OutboxTextsTest, AJobThatWaitsSaysWhereUntilWhenAndWhatSendsIt)
{
    SubmissionEnd end;
    end.kind = SubmissionEnd::Kind::waiting;
    end.number = 7;
    end.due = momentOf(parseLocalTime("2024-03-06T04:05"));
    EXPECT_EQ(
        submittedText(end, "the desktop sends it", "letter.ps", 2, now),
        "The fax job of letter.ps for 2 recipients waits as job 7 of the outbox until tomorrow at 04:05; "
        "the desktop sends it.");
    end.reason = "queue fax does not hold it";
    EXPECT_THAT(submittedText(end, "the desktop sends it", "letter.ps", 1, now),
                HasSubstr("04:05; queue fax does not hold it; the desktop sends it."));
    end.kind = SubmissionEnd::Kind::held;
    end.receipt.place = "queue fax, job 3";
    EXPECT_EQ(
        submittedText(end, {}, "letter.ps", 1, now),
        "The fax job of letter.ps for 1 recipient was handed over to queue fax, job 3, which holds it until "
        "tomorrow at 04:05.");
}

TEST_F(OutboxTextsTest, TheQuestionAboutAnOverdueJobNamesDocumentTimeRecipientsAndDestination)
{
    EXPECT_EQ(overdueText(job, now), "The fax job of letter.ps was to go out today at 04:05.");
    EXPECT_THAT(overdueDetails(job),
                AllOf(HasSubstr("Ann (555-1231)"), HasSubstr("Bob (555-1232)"),
                      testing::EndsWith("\nDestination: device fax.example:9100"), Not(HasSubstr("card"))));
    job.chargesCard = true;
    EXPECT_THAT(overdueDetails(job), HasSubstr("\nA credit card is charged\n"));
}

TEST_F(OutboxTextsTest, WhatIsLeftBehindIsCounted)
{
    EXPECT_EQ(leftBehindText({1, now + 60}, now), "A fax job waits in the outbox until today at 14:08.");
    EXPECT_EQ(leftBehindText({3, now + 60}, now),
              "3 fax jobs wait in the outbox, the last until today at 14:08.");
}

} // namespace
} // namespace quelm
