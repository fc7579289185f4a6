// Tests of giving jobs to threads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/job_claims.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

TEST(JobClaimsTest, AJobIsOneThreadsUntilItIsFinished)
{
    JobClaims claims{seconds(1)};
    EXPECT_TRUE(claims.take(1));
    EXPECT_FALSE(claims.take(1));
    EXPECT_TRUE(claims.take(2));
    EXPECT_FALSE(claims.nextEnd());
    claims.finish(1);
    EXPECT_TRUE(claims.take(1));
}

TEST(JobClaimsTest, OneThatFailedRestsAndHoldsNoOtherUp)
{
    JobClaims claims{hours(1)};
    EXPECT_TRUE(claims.take(1));
    const auto before = steady_clock::now();
    claims.postpone(1);
    EXPECT_FALSE(claims.take(1));
    EXPECT_TRUE(claims.take(2));
    ASSERT_TRUE(claims.nextEnd());
    EXPECT_GE(*claims.nextEnd(), before + hours(1));
    EXPECT_LE(*claims.nextEnd(), steady_clock::now() + hours(1));
}

TEST(JobClaimsTest, AJobIsTakenAgainBehindItsRest)
{
    JobClaims claims{milliseconds(0)};
    EXPECT_TRUE(claims.take(1));
    claims.postpone(1);
    EXPECT_TRUE(claims.take(1));
}

TEST(JobClaimsTest, RestsGrowUntilSomethingGoesRight)
{
    Rest rest{seconds(1)};
    for (const int expected : {1, 2, 4, 8, 16, 32, 32, 32})
        EXPECT_EQ(rest.next(), seconds(expected));
    rest.over();
    EXPECT_EQ(rest.next(), seconds(1));
}

} // namespace
} // namespace quelm::device::tests
