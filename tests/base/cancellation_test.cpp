// Asking whether work is to end.
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
