// Asking whether work is to end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/cancellation.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

TEST(CancellationTest, NobodyToAskMeansNever) { EXPECT_FALSE(isCancelled({})); }

TEST(CancellationTest, WhoIsAskedDecides)
{
    bool cancel = false;
    const Cancellation cancelled = [&cancel] { return cancel; };
    EXPECT_FALSE(isCancelled(cancelled));
    cancel = true;
    EXPECT_TRUE(isCancelled(cancelled));
}

} // namespace
} // namespace quelm::tests
