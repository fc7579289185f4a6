// What the tests of print queues share: a job, and the print server of the thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_JOBS_CUPS_SUPPORT_H
#define TESTS_DRIVER_JOBS_CUPS_SUPPORT_H

#include "driver/jobs/queue_limits.h"
#include "tests/driver/jobs/job_support.h"

#include <cups/cups.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace quelm::tests {

/// A test whose print server is what it says, and no file of settings.
class CupsTest : public JobTest {
protected:
    CupsTest()
    {
        for (const auto* name : {"LPDEST", "PRINTER"})
            ::unsetenv(name);
        ::setenv("HOME", path("home").c_str(), 1);
        // libcups does it with its first connection and relies on it; other tests want it undone.
        struct sigaction ignored = {};
        ignored.sa_handler = SIG_IGN;
        ::sigaction(SIGPIPE, &ignored, &pipeBefore_);
    }
    ~CupsTest() override
    {
        ::sigaction(SIGPIPE, &pipeBefore_, nullptr);
        cupsSetServer(nullptr);
    }

    static void useServer(const std::string& address) { cupsSetServer(address.c_str()); }

    QueueLimits limits;

private:
    struct sigaction pipeBefore_ = {};
};

} // namespace quelm::tests

#endif
