// The owner of a file descriptor.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/file_handle.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quelm::tests {
namespace {

bool isOpen(int descriptor) { return ::fcntl(descriptor, F_GETFD) != -1; }

TEST(FileHandleTest, ClosesWhatItOwns)
{
    int number = -1;
    {
        FileHandle first(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        number = first.get();
        FileHandle second(std::move(first));
        EXPECT_EQ(second.get(), number);
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(FileHandleTest, AssigningClosesWhatWasOwnedBefore)
{
    FileHandle handle(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const int number = handle.get();
    handle = FileHandle();
    EXPECT_FALSE(isOpen(number));
}

TEST(FileHandleTest, WhatIsGivenAwayStaysOpen)
{
    FileHandle handle(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const int number = handle.release();
    EXPECT_FALSE(handle.isOpen());
    EXPECT_EQ(handle.close(), 0);
    EXPECT_TRUE(isOpen(number));
    ::close(number);
}

TEST(FileHandleTest, ClosingSaysWhatTheSystemSays)
{
    FileHandle handle(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    FileHandle same(handle.get());
    EXPECT_EQ(handle.close(), 0);
    EXPECT_FALSE(handle.isOpen());
    EXPECT_EQ(same.close(), EBADF);
    EXPECT_FALSE(same.isOpen());
}

} // namespace
} // namespace quelm::tests
