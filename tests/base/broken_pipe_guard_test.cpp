// A peer that went away does not end the process.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/broken_pipe_guard.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

namespace {

using quelm::BrokenPipeGuard;

/// Writes to a pipe that nobody reads any more; returns the error.
int writeToBrokenPipe()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return -1;
    close(ends[0]);
    errno = 0;
    const ssize_t written = write(ends[1], "x", 1);
    const int error = errno;
    close(ends[1]);
    return written == 1 ? 0 : error;
}

bool isPending(int signal)
{
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

bool isBlocked(int signal)
{
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return sigismember(&mask, signal) == 1;
}

TEST(BrokenPipeGuardTest, AWriteFailsWithoutEndingTheProcess)
{
    EXPECT_EQ(inProcess([] {
                  std::signal(SIGPIPE, SIG_DFL);
                  const BrokenPipeGuard guard;
                  return writeToBrokenPipe();
              }),
              EPIPE);
}

TEST(BrokenPipeGuardTest, NothingOfItIsLeftAfterwards)
{
    EXPECT_EQ(inProcess([] {
                  std::signal(SIGPIPE, SIG_DFL);
                  {
                      const BrokenPipeGuard guard;
                      writeToBrokenPipe();
                  }
                  if (isPending(SIGPIPE) || isBlocked(SIGPIPE))
                      return 1;
                  return writeToBrokenPipe(); // ends the process as ever
              }),
              128 + SIGPIPE);
}

TEST(BrokenPipeGuardTest, ASignalThatWaitedBeforeGoesOnWaiting)
{
    EXPECT_EQ(inProcess([] {
                  sigset_t brokenPipe;
                  sigemptyset(&brokenPipe);
                  sigaddset(&brokenPipe, SIGPIPE);
                  pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
                  raise(SIGPIPE);
                  {
                      const BrokenPipeGuard guard;
                      writeToBrokenPipe();
                  }
                  return isPending(SIGPIPE) && isBlocked(SIGPIPE) ? 0 : 1;
              }),
              0);
}

} // namespace
