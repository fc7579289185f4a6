// Tests of points in time for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/iso_moment.h"

#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <ctime>

namespace quelm {
namespace {

TEST(IsoMoment, IsLocalTimeWithItsDistanceFromUtc)
{
    {
        const KeptVariable zone("TZ");
        constexpr std::time_t moment = 1795300500; // 2026-11-22 22:35 in UTC
        for (const auto& [name, expected] : {std::pair{"UTC", "2026-11-21T22:35:00+00:00"},
                                             {"Asia/Kolkata", "2026-11-22T04:05:00+05:30"},
                                             {"America/New_York", "2026-11-21T17:35:00-05:00"}}) {
            ::setenv("TZ", name, 1);
            ::tzset();
            EXPECT_EQ(isoMoment(moment), expected);
        }
    }
    ::tzset();
}

} // namespace
} // namespace quelm
