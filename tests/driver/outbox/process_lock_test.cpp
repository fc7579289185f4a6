// Tests of locks that end with their file, and with the process.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/process_lock.h"

#include "tests/driver/jobs/job_support.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>

namespace quelm::tests {
namespace {

class ProcessLockTest : public JobTest {
protected:
    FileHandle open() const { return FileHandle(::open(lockFile.c_str(), O_RDWR | O_CLOEXEC)); }

    std::string lockFile = file("lock", "");
};

TEST_F(ProcessLockTest, ALockKeepsOthersOfTheSameProcessOut)
{
    FileHandle one = open();
    const FileHandle other = open();
    EXPECT_TRUE(lockByte(one, 0));
    EXPECT_TRUE(lockByte(one, 0)) << "again by the same";
    EXPECT_FALSE(lockByte(other, 0));
    EXPECT_TRUE(lockByte(other, 1)) << "another byte";
    open(); // closing it drops nothing
    EXPECT_FALSE(lockByte(other, 0));
    one.close();
    EXPECT_TRUE(lockByte(other, 0));
}

TEST_F(ProcessLockTest, ToAskTakesNothing)
{
    const FileHandle one = open();
    const FileHandle other = open();
    EXPECT_FALSE(isByteLocked(one, 0));
    EXPECT_TRUE(lockByte(other, 0));
    EXPECT_TRUE(isByteLocked(one, 0));
    EXPECT_FALSE(isByteLocked(other, 0)) << "its own";
}

TEST_F(ProcessLockTest, AnotherProcessIsKeptOutToo)
{
    const FileHandle one = open();
    ASSERT_TRUE(lockByte(one, 0));
    EXPECT_EQ(inProcess([&] { return lockByte(open(), 0) ? 1 : 0; }), 0);
    EXPECT_EQ(inProcess([&] { return lockByte(open(), 1) ? 1 : 0; }), 1);
    EXPECT_FALSE(isByteLocked(one, 1)) << "that process has ended";
}

} // namespace
} // namespace quelm::tests
