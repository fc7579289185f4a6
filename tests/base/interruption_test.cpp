// Signals that wait until work has ended in order.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/interruption.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(Interruption, HoldsASignalBackUntilItEnds)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(inProcess([signal] {
                      const Interruption interruption;
                      if (Interruption::requested())
                          return 1;
                      std::raise(signal);
                      return Interruption::requested() ? 0 : 2;
                  }),
                  128 + signal);
    }
}

TEST(Interruption, LeavesNothingBehindWithoutASignal)
{
    EXPECT_EQ(inProcess([] {
                  std::signal(SIGINT, SIG_DFL);
                  {
                      const Interruption interruption;
                  }
                  struct sigaction now {};
                  sigaction(SIGINT, nullptr, &now);
                  return now.sa_handler == SIG_DFL && !Interruption::requested() ? 7 : 1;
              }),
              7);
}

TEST(Interruption, SignalsThatAreIgnoredStayIgnored)
{
    EXPECT_EQ(inProcess([] {
                  std::signal(SIGINT, SIG_IGN);
                  const Interruption interruption;
                  std::raise(SIGINT);
                  return Interruption::requested() ? 1 : 7;
              }),
              7);
}

} // namespace
} // namespace quelm
