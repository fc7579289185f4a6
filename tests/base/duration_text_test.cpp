// How long something is waited for, in words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/duration_text.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

TEST(DurationText, WholeSecondsAreCountedAsSuch)
{
    EXPECT_EQ(durationText(std::chrono::seconds(60)), "60 s");
    EXPECT_EQ(durationText(std::chrono::milliseconds(1500)), "1500 ms");
}

TEST(DurationText, TheNearestSecondIsShown)
{
    using std::chrono::milliseconds;
    EXPECT_EQ(secondsShown(milliseconds(16'499)).count(), 16);
    EXPECT_EQ(secondsShown(milliseconds(16'600)).count(), 17);
}

} // namespace
} // namespace quelm::tests
