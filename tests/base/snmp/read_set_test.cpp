// Sets of descriptors that grow.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/snmp/read_set.h"

#include <gtest/gtest.h>

namespace {

TEST(SnmpReadSet, HasRoomForADescriptorBeyondTheFirstThousand)
{
    quelm::SnmpReadSet set;
    constexpr int high = 5000;
    EXPECT_EQ(netsnmp_large_fd_is_set(high, set.get()), 0);
    netsnmp_large_fd_setfd(high, set.get());
    EXPECT_NE(netsnmp_large_fd_is_set(high, set.get()), 0);
}

} // namespace
