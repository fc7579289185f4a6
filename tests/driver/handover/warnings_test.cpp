// Warnings are as many as a person reads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/warnings.h"

#include "tests/support/log_capture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::ElementsAre;

TEST(Warnings, AreAllThereWhenTheyAreFew)
{
    EXPECT_THAT(bounded({"a", "b"}, 2), ElementsAre("a", "b"));
    EXPECT_THAT(bounded({}, 2), testing::IsEmpty());
}

TEST(Warnings, AreCutWhenTheyAreMany)
{
    EXPECT_THAT(bounded({"a", "b", "c"}, 2), ElementsAre("a", "b", "there is 1 more warning like this"));
    EXPECT_THAT(bounded({"a", "b", "c", "d"}, 2),
                ElementsAre("a", "b", "there are 2 more warnings like this"));
}

TEST(Warnings, AreLoggedOneByOne)
{
    const LogCapture log;
    logWarnings({"a", "b"});
    EXPECT_THAT(log.messages, ElementsAre("a", "b"));
    logWarnings(std::vector<std::string>(300, "c"));
    EXPECT_EQ(log.messages.size(), 13U);
    EXPECT_EQ(log.messages.back(), "there are 290 more warnings like this");
}

} // namespace
} // namespace quelm
