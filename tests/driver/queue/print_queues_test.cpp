// Tests of listing the queues of a real print server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/print_queues.h"

#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;

/// "NAME (DESCRIPTION)" and what there is to say of it.
std::string shown(const PrintQueue& queue)
{
    return queue.name + " (" + queue.description + ")" + (queue.isDefault ? " default" : "") +
           (queue.isAccepting ? "" : " closed") + (queue.isPaused ? " paused" : "");
}

class PrintQueuesTest : public CupsTest {
protected:
    std::vector<std::string> listed() const
    {
        std::vector<std::string> lines;
        for (const auto& queue : printQueues(limits))
            lines.push_back(shown(queue));
        return lines;
    }
};

TEST_F(PrintQueuesTest, QueuesAreSortedAndTellWhatTheyAre)
{
    servers::CupsdServer cupsd({{{"office", "Büro, 1. Stock"},
                                 {"fax", "The fax device", true},
                                 {"attic", "", false, false},
                                 {"cellar", "Below", false, true, "Flooded"}},
                                {}});
    useServer(cupsd.address());
    EXPECT_EQ(listed(),
              (std::vector<std::string>{"attic (attic) closed", "cellar (Below) paused",
                                        "fax (The fax device) default", "office (Büro, 1. Stock)"}));
}

TEST_F(PrintQueuesTest, TheUsersDefaultGoesAheadOfTheServers)
{
    servers::CupsdServer cupsd({{{"a", ""}, {"b", "", true}, {"c", ""}}, {}});
    useServer(cupsd.address());
    ::setenv("PRINTER", "lp", 1);
    EXPECT_EQ(listed(), (std::vector<std::string>{"a (a)", "b (b) default", "c (c)"}));
    ::setenv("PRINTER", "c", 1);
    EXPECT_EQ(listed(), (std::vector<std::string>{"a (a)", "b (b)", "c (c) default"}));
    ::setenv("LPDEST", "a", 1);
    EXPECT_EQ(listed(), (std::vector<std::string>{"a (a) default", "b (b)", "c (c)"}));
    ::unsetenv("PRINTER");
    ::unsetenv("LPDEST");
}

TEST_F(PrintQueuesTest, AServerMayHaveNoQueues)
{
    servers::CupsdServer cupsd({});
    useServer(cupsd.address());
    EXPECT_TRUE(listed().empty());
}

TEST_F(PrintQueuesTest, AServerThatDoesNotRunIsOneLine)
{
    useServer(path("no-socket"));
    EXPECT_EQ(errorLine([&] { listed(); }),
              "print queues: the print server " + path("no-socket") +
                  " cannot be reached; start CUPS, or set CUPS_SERVER to the server that has the queue");
}

TEST_F(PrintQueuesTest, ASilentServerIsWaitedForWithinTheLimit)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    EXPECT_EQ(errorLine([&] { listed(); }), "the queues of the print server cannot be listed: the print "
                                            "server " +
                                                silent.address() + " does not answer");
}

} // namespace
} // namespace quelm::tests
