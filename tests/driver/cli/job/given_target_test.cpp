// Tests of the one place that a job goes to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/given_target.h"

#include "base/error.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(GivenTarget, IsTheOneThatWasNamed)
{
    JobOptions options;
    EXPECT_FALSE(givenTarget(options));
    options.queue = "fax";
    EXPECT_EQ(std::get<QueueTarget>(givenTarget(options).value()).name, "fax");
    options = {};
    options.output = "-";
    EXPECT_EQ(std::get<FileTarget>(givenTarget(options).value()).path, "-");
    options = {};
    options.device = NetworkAddress{"fax.example", 9100};
    EXPECT_EQ(std::get<NetworkAddress>(givenTarget(options).value()).host, "fax.example");
    options.queue = "fax";
    EXPECT_THROW(static_cast<void>(givenTarget(options)), UsageError);
}

} // namespace
} // namespace quelm
