// What users read of error numbers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/system_reason.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace quelm::tests {
namespace {

TEST(SystemReasonTest, SaysWhatToDo)
{
    EXPECT_EQ(systemReason(ENOSPC), "the disk is full; make room and try again");
    EXPECT_EQ(systemReason(EDQUOT), systemReason(ENOSPC));
    EXPECT_EQ(systemReason(EFBIG), "the file would exceed the size limit; raise the limit and try again");
}

TEST(SystemReasonTest, SaysWhatItMeansHere)
{
    EXPECT_EQ(systemReason(EPIPE), "the program that reads it has ended");
    EXPECT_EQ(systemReason(EBADF), "the program was started without it");
    EXPECT_EQ(systemReason(EACCES), "permission denied");
    EXPECT_EQ(systemReason(EPERM), systemReason(EACCES));
}

TEST(SystemReasonTest, LeavesTheRestToTheSystem) { EXPECT_EQ(systemReason(ENOTDIR), "Not a directory"); }

} // namespace
} // namespace quelm::tests
