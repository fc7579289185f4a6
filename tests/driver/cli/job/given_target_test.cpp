// Tests of the one place that a job goes to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/given_target.h"

#include "base/error.h"
#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(GivenTarget, IsTheOneThatWasNamed)
{
    JobOptions options;
    EXPECT_FALSE(givenTarget(options, {}));
    options.queue = "fax";
    EXPECT_EQ(std::get<QueueTarget>(givenTarget(options, {}).value()).name, "fax");
    options = {};
    options.output = "-";
    EXPECT_EQ(std::get<FileTarget>(givenTarget(options, {}).value()).path, "-");
    options = {};
    options.device = NetworkAddress{"fax.example", 9100};
    EXPECT_EQ(std::get<NetworkAddress>(givenTarget(options, {}).value()).host, "fax.example");
    options.queue = "fax";
    EXPECT_THROW(static_cast<void>(givenTarget(options, {})), UsageError);
}

TEST(GivenTarget, MayBeADestinationOfTheConfiguration)
{
    const std::vector<NamedTarget> destinations{{"Lab", NetworkAddress{"10.0.0.7", 9100}, Pdl::pjl},
                                                {"Head Office", QueueTarget{"fax", "print.example"}, {}}};
    JobOptions options;
    options.destination = "Head Office";
    const auto target = givenTarget(options, destinations);
    EXPECT_EQ(std::get<QueueTarget>(target.value()).name, "fax");
    EXPECT_EQ(std::get<QueueTarget>(target.value()).server, "print.example");
    const auto refusal = [&] {
        return test::failureLine<UsageError>([&] { static_cast<void>(givenTarget(options, destinations)); });
    };
    options.destination = "Lob";
    EXPECT_EQ(refusal(), "--destination: there is no destination \"Lob\"; possible are Lab, Head Office");
    options.destination = "Lab";
    options.output = "-";
    EXPECT_EQ(refusal(),
              "a job goes to one place; give one of --output, --device, --queue and --destination");
    options = {};
    options.destination = "Lab";
    EXPECT_NE(test::failureLine<UsageError>([&] {
                  static_cast<void>(givenTarget(options, {}));
              }).find("none is configured"),
              std::string::npos);
}

} // namespace
} // namespace quelm
