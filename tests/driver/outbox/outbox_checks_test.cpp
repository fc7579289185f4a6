// What can be done with a job in each of its states.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_checks.h"

#include "driver/outbox/outbox_failure.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

bool passes(void (*check)(const OutboxJob&), const OutboxJob& job)
{
    try {
        check(job);
        return true;
    } catch (const JobUnavailable& error) {
        EXPECT_NE(std::string(error.what()).find("job 7 of the outbox"), std::string::npos) << error.what();
        return false;
    }
}

TEST(OutboxChecks, GoByTheState)
{
    struct Case {
        OutboxState state;
        bool isReady;
        bool isCancellable;
        bool isRepeatable;
    };
    OutboxJob job;
    job.number = 7;
    job.hasStream = true;
    for (const auto& one : {Case{OutboxState::waiting, true, true, false},
                            {OutboxState::handingOver, false, false, false},
                            {OutboxState::handedOver, false, false, true},
                            {OutboxState::uncertain, true, true, true},
                            {OutboxState::failed, true, true, true},
                            {OutboxState::cancelled, false, false, false}}) {
        job.state = one.state;
        EXPECT_EQ(passes(requireReady, job), one.isReady) << wordOf(one.state);
        EXPECT_EQ(passes(requireCancellable, job), one.isCancellable) << wordOf(one.state);
        EXPECT_EQ(passes(requireRepeatable, job), one.isRepeatable) << wordOf(one.state);
    }
}

TEST(OutboxChecks, WhatAQueueHoldsCanBeCancelled)
{
    OutboxJob job;
    job.number = 7;
    job.state = OutboxState::handedOver;
    job.isHeld = true;
    EXPECT_TRUE(passes(requireCancellable, job));
}

TEST(OutboxChecks, WithoutItsStreamAJobCanOnlyBeCancelled)
{
    OutboxJob job;
    job.number = 7;
    job.state = OutboxState::failed;
    EXPECT_FALSE(passes(requireReady, job));
    EXPECT_FALSE(passes(requireRepeatable, job));
    EXPECT_TRUE(passes(requireCancellable, job));
}

} // namespace
} // namespace quelm
