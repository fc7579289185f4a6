// Jobs on their way to devices and print queues: whole, refused, cut off by the device, cut off by the user.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/holding_proxy.h"
#include "tests/servers/listeners.h"
#include "tests/servers/print_listener.h"
#include "tests/servers/refused_port.h"
#include "tests/servers/server_process.h"

#include <gmock/gmock.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

namespace journeys {
namespace {

using servers::Ending;
using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

class DestinationsJourney : public Journey {
protected:
    /// Sends the letter to Ann; the clock stands still.
    Arguments fax(const Arguments& options) const
    {
        Arguments all{"--now", "2024-03-05T14:07", "fax", letter, "--to", "Ann=555-1234"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    /// The same in an environment whose print server is this.
    Request printing(const Arguments& options, const std::string& server) const
    {
        Request request;
        request.arguments = fax(options);
        request.environment = {"CUPS_SERVER=" + server, "LPDEST=", "PRINTER="};
        return request;
    }

    /// The job as standard output gets it.
    std::string job() const { return driver(fax({"--output", "-"})).output; }

    /// A document larger than what connections have room for.
    std::string largeLetter() const
    {
        return file("large.ps", content("letter.ps") + "%" + std::string(std::size_t{24} << 20U, 'x') + "\n");
    }

    std::string letter = document("letter.ps", "Hello");
};

TEST_F(DestinationsJourney, ADeviceGetsTheJobAndTheUserIsToldSo)
{
    PrintListener device(Manner::takesAll);
    const auto result = withoutSummary(driver(fax({"--device", device.address()})));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "device " + device.address() + ": fax job of " + letter + " for 1 recipient handed over\n");
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), job());
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
}

TEST_F(DestinationsJourney, ADeviceGetsAPjlJobForManyRecipients)
{
    PrintListener device(Manner::takesAll);
    const auto result = driver(
        fax({"--to", "Bob=2", "--pdl", "pjl", "--device", "localhost:" + std::to_string(device.port())}));
    EXPECT_THAT(result.errors, EndsWith(" for 2 recipients handed over\n"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_THAT(device.received(), StartsWith("\x1b%-12345X@PJL "));
    EXPECT_THAT(device.received(), EndsWith("\x1b%-12345X"));
}

TEST_F(DestinationsJourney, DevicesThatAreNotThere)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    const auto nobody = refused.address();
    expectFailure(withoutSummary(driver(fax({"--device", nobody}))), 1,
                  "device " + nobody + ": refuses the connection");
    expectFailure(withoutSummary(driver(fax({"--device", "127.255.255.255"}))), 1,
                  "device 127.255.255.255:9100: cannot be reached");
}

TEST_F(DestinationsJourney, ADeviceThatBreaksOffIsToldWithWhatWentOut)
{
    PrintListener device(Manner::resets, 5000);
    letter = largeLetter();
    const auto result = withoutSummary(driver(fax({"--device", device.address()})));
    expectFailure(result, 1, "device " + device.address() + ": broke off the connection after ");
    EXPECT_THAT(result.errors, Not(HasSubstr("handed over")));
}

TEST_F(DestinationsJourney, CtrlCEndsASendingAtOnceAndSaysWhatWentOut)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        PrintListener device(Manner::stalls, 5000);
        letter = largeLetter();
        Request request;
        request.arguments = fax({"--device", device.address()});
        request.meanwhile = [&](int process) {
            EXPECT_TRUE(device.waitForBytes(5000));
            ::kill(process, signal);
        };
        const auto start = std::chrono::steady_clock::now();
        const auto result = withoutSummary(driver(request));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
        EXPECT_EQ(result.status, 128 + signal);
        EXPECT_THAT(
            result.errors,
            MatchesRegex("quelm-driver: device .*: the job was cancelled after [0-9]+ of [0-9]+ bytes; "
                         "look at the device whether it does something with them; the outbox keeps it as "
                         "job [0-9]+\n"));
        EXPECT_EQ(device.waitForEnding(), Ending::reset) << "a close would tell it that the job ends here";
    }
}

TEST_F(DestinationsJourney, ATerminalShowsHowFarASendingIs)
{
    PrintListener device(Manner::slow);
    letter = file("long.ps", content("letter.ps") + "%" + std::string(1'000'000, 'x') + "\n");
    Request request;
    request.arguments = fax({"--device", device.address()});
    request.errorsAreTerminal = true;
    const auto result = driver(request);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("\r\x1b[KSending the job: "));
    EXPECT_THAT(result.errors, EndsWith("\r\x1b[Kdevice " + device.address() + ": fax job of " + letter +
                                        " for 1 recipient handed over\r\n"));
}

TEST_F(DestinationsJourney, AQueuePrintsTheJobAndTheUserIsToldItsNumber)
{
    servers::CupsdServer cupsd({{{"fax"}}});
    for (const auto& server : {cupsd.address(), cupsd.socketPath()}) {
        const int number = server == cupsd.address() ? 1 : 2;
        const auto result = withoutSummary(driver(printing({"--queue", "fax"}, server)));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "queue fax, job " + std::to_string(number) + ": fax job of " + letter +
                                     " for 1 recipient handed over\n");
        const auto printed = cupsd.printed(number);
        EXPECT_EQ(printed.user, "ann");
        EXPECT_THAT(printed.title, StartsWith("letter.ps [quelm ")) << "the mark by which it is found again";
        EXPECT_EQ(printed.content, job());
    }
}

TEST_F(DestinationsJourney, APausedQueueIsTold)
{
    servers::PrinterQueue queue{"fax"};
    queue.pausedWith = "Toner low";
    servers::CupsdServer cupsd({{queue}});
    EXPECT_EQ(withoutSummary(driver(printing({"--queue", "fax"}, cupsd.address()))).errors,
              "queue fax, job 1: fax job of " + letter +
                  " for 1 recipient handed over; the queue is paused (Toner low)\n");
}

TEST_F(DestinationsJourney, QueuesThatTakeNoJob)
{
    servers::PrinterQueue closed{"closed"};
    closed.accepting = false;
    servers::CupsdServer cupsd({{{"fax"}, closed}});
    expectFailure(withoutSummary(driver(printing({"--queue", "fox"}, cupsd.address()))), 1,
                  "it has closed, fax");
    expectFailure(withoutSummary(driver(printing({"--queue", "closed"}, cupsd.address()))), 1,
                  "queue closed: takes no jobs");
    expectFailure(driver(printing({"--queue", ""}, cupsd.address())), 2, "--queue: is empty");
    expectFailure(withoutSummary(driver(printing({"--queue", "fax"}, path("no-socket")))), 1,
                  "queue fax: the print server " + path("no-socket") + " cannot be reached");
}

TEST_F(DestinationsJourney, CtrlCHalfWayCancelsTheJobInItsQueue)
{
    servers::CupsdServer cupsd({{{"fax"}}});
    letter = largeLetter();
    servers::HoldingProxy proxy(cupsd.port(), 1'000'000);
    auto request = printing({"--queue", "fax"}, proxy.address());
    request.meanwhile = [&](int process) {
        while (!proxy.isHolding())
            std::this_thread::yield();
        ::kill(process, SIGINT);
        proxy.goOn();
    };
    const auto result = withoutSummary(driver(request));
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_THAT(
        result.errors,
        MatchesRegex("quelm-driver: queue fax: the job was cancelled after [0-9]+ of [0-9]+ bytes of the "
                     "job; job 1 was cancelled in the queue; send it again\n"));
    EXPECT_FALSE(cupsd.wasPrinted(1));
}

TEST_F(DestinationsJourney, CtrlCEndsTheWaitForAPrintServer)
{
    servers::ServingListener silent([](int, int stop) {
        pollfd end{stop, POLLIN, 0};
        ::poll(&end, 1, -1);
    });
    auto request = printing({"--queue", "fax"}, silent.address());
    request.meanwhile = [&](int process) {
        while (silent.connections() == 0)
            std::this_thread::yield();
        ::kill(process, SIGINT);
    };
    const auto start = std::chrono::steady_clock::now();
    const auto result = withoutSummary(driver(request));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_THAT(result.errors, StartsWith("quelm-driver: queue fax: the job was cancelled"));
}

TEST_F(DestinationsJourney, AJobGoesToOnePlace)
{
    PrintListener device(Manner::takesAll);
    const std::vector<Arguments> wrong = {
        fax({}),
        fax({"--output", path("out"), "--device", device.address()}),
        fax({"--output", path("out"), "--queue", "fax"}),
        fax({"--device", device.address(), "--queue", "fax"}),
        fax({"--device", device.address(), "--device", device.address()}),
        fax({"--device", "one:two"}),
        {"attributes", "--to", "Ann=1", "--device", device.address()},
        {"attributes", "--to", "Ann=1", "--queue", "fax"},
    };
    for (const auto& arguments : wrong)
        expectFailure(driver(arguments), 2, "");
    EXPECT_EQ(device.connections(), 0);
    EXPECT_FALSE(exists("out"));
}

TEST_F(DestinationsJourney, AFailedJobSendsNothing)
{
    PrintListener device(Manner::takesAll);
    expectFailure(driver({"fax", letter, "--device", device.address()}), 1, "no recipients");
    expectFailure(driver({"fax", path("none.ps"), "--to", "Ann=1", "--device", device.address()}), 1,
                  "none.ps");
    EXPECT_EQ(device.connections(), 0);
}

TEST_F(DestinationsJourney, AScriptHandsItsJobToADeviceOrAQueue)
{
    PrintListener device(Manner::takesAll);
    servers::CupsdServer cupsd({{{"fax"}}});
    auto request = printing({}, cupsd.address());
    request.arguments = {"--now", "2024-03-05T14:07", "script", "-"};
    request.input = "call T40InvokeFaxDialog\n"
                    "press \"AddFaxRcpt\"\n"
                    "type \"RecipientName\" \"Ann\"\n"
                    "type \"RecipientNumber\" \"555-1234\"\n"
                    "press \"LanFaxAddRcpt OK Button\"\n"
                    "press \"LanFax OK Button\"\n"
                    "fax \"" +
                    letter + "\" device " + device.address() + "\nfax \"" + letter + "\" queue fax\n";
    const auto result = withoutSummary(withoutSummary(driver(request)));
    EXPECT_EQ(result.errors, "") << "each job is summed up";
    EXPECT_THAT(result.output, EndsWith("ok\nok\nhanded device \"" + device.address() +
                                        "\"\nok\nhanded queue \"fax\" job 1\n"));
    EXPECT_EQ(device.waitForEnding(), Ending::closed);
    EXPECT_EQ(device.received(), job());
    EXPECT_EQ(cupsd.printed(1).content, job());

    request.input = "windows\nfax \"" + letter + "\" device one:two\n";
    expectFailure(driver(request), 1, "standard input:2: \"one:two\" is no address");
}

} // namespace
} // namespace journeys
