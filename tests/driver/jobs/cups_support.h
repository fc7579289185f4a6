// What the tests of print queues share: a job, and the print server of the thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_JOBS_CUPS_SUPPORT_H
#define TESTS_DRIVER_JOBS_CUPS_SUPPORT_H

#include "driver/jobs/queue_limits.h"
#include "driver/queue/server_job.h"
#include "tests/driver/jobs/job_support.h"

#include <cups/cups.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

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

    /// Waits until the server says so of a job, and returns what it says at last: some ten seconds later when
    /// it never does.
    ServerJob waitForJob(int number, const std::function<bool(const ServerJob&)>& isSo) const
    {
        const Transfer unstoppable;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        for (;;) {
            CupsServer server("queue", limits, unstoppable, directly);
            const auto job = askForServerJob(server, "fax", "ann", number).job.value_or(ServerJob());
            if (isSo(job) || std::chrono::steady_clock::now() > deadline)
                return job;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }

    /// Lets a held job go, as `lp -H resume` does.
    void release(int number) const
    {
        const Transfer unstoppable;
        CupsServer server("queue", limits, unstoppable, directly);
        EXPECT_TRUE(server.ask(newJobRequest(IPP_OP_RELEASE_JOB, "fax", "ann", number), "/jobs").isSuccess());
    }

    QueueLimits limits;
    std::string directly; ///< the server that the two go to; empty: the test's

private:
    struct sigaction pipeBefore_ = {};
};

} // namespace quelm::tests

#endif
