// Tests of the words and rules of a job in the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_job.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

OutboxJob jobOf(OutboxState state, std::time_t due)
{
    OutboxJob job;
    job.state = state;
    job.due = due;
    return job;
}

TEST(OutboxJobTest, AsksMoreThanAnHourBehindItsTime)
{
    constexpr std::time_t due = 1'700'000'000;
    EXPECT_FALSE(jobOf(OutboxState::waiting, due).isOverdue(due - 1));
    EXPECT_FALSE(jobOf(OutboxState::waiting, due).isOverdue(due + 3600));
    EXPECT_TRUE(jobOf(OutboxState::waiting, due).isOverdue(due + 3601));
}

TEST(OutboxJobTest, OnlyAJobThatWaitsAsks)
{
    for (const auto state : {OutboxState::handingOver, OutboxState::handedOver, OutboxState::uncertain,
                             OutboxState::failed, OutboxState::cancelled})
        EXPECT_FALSE(jobOf(state, 0).isOverdue(1'000'000)) << wordOf(state);
}

TEST(OutboxJobTest, EveryStateHasAWord)
{
    EXPECT_STREQ(wordOf(OutboxState::waiting), "waiting");
    EXPECT_STREQ(wordOf(OutboxState::handingOver), "handing over");
    EXPECT_STREQ(wordOf(OutboxState::handedOver), "handed over");
    EXPECT_STREQ(wordOf(OutboxState::uncertain), "uncertain");
    EXPECT_STREQ(wordOf(OutboxState::failed), "failed");
    EXPECT_STREQ(wordOf(OutboxState::cancelled), "cancelled");
}

} // namespace
} // namespace quelm
