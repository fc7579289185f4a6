// Tests of what a front end and a job on its way tell each other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/transfer.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

TEST(Transfer, WithoutFunctionsNothingIsToldAndNothingCancelled)
{
    const Transfer transfer;
    transfer.report(1, 2);
    EXPECT_FALSE(transfer.isCancelled());
}

TEST(Transfer, TellsItsFunctions)
{
    std::uint64_t seen = 0;
    bool cancel = false;
    const Transfer transfer{[&seen](std::uint64_t done, std::uint64_t total) { seen = done * 100 + total; },
                            [&cancel] { return cancel; }};
    transfer.report(3, 7);
    EXPECT_EQ(seen, 307U);
    EXPECT_FALSE(transfer.isCancelled());
    cancel = true;
    EXPECT_TRUE(transfer.isCancelled());
}

} // namespace
} // namespace quelm::tests
