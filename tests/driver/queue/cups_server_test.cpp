// Tests of asking a print server: within bounds, and without a prompt.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/cups_server.h"

#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"
#include "tests/servers/refused_port.h"

#include <gmock/gmock.h>

#include <atomic>
#include <clocale>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class CupsServerTest : public CupsTest {
protected:
    std::string failureToConnect() const
    {
        return errorLine([&] { CupsServer("queue fax", limits, transfer); });
    }

    IppAnswer stateOf(const std::string& queue)
    {
        CupsServer server("queue fax", limits, transfer);
        return server.ask(newQueueRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, queue, "ann"), queueResource(queue));
    }

    Transfer transfer;
};

TEST_F(CupsServerTest, AnswersCarryAttributes)
{
    servers::CupsdServer cupsd({{{"fax", "The fax device"}}, {}});
    useServer(cupsd.address());
    const auto answer = stateOf("fax");
    EXPECT_TRUE(answer.isSuccess());
    EXPECT_EQ(answer.reason, "");
    EXPECT_EQ(answer.text("printer-info"), "The fax device");
    EXPECT_EQ(answer.integer("printer-state"), IPP_PSTATE_IDLE);
    EXPECT_EQ(answer.text("no-such-attribute"), "");
    EXPECT_EQ(answer.integer("no-such-attribute"), 0);
    EXPECT_EQ(answer.integer("printer-info"), 0) << "a text is no number";
}

TEST_F(CupsServerTest, AServerOnASocketIsAskedToo)
{
    servers::CupsdServer cupsd({{{"fax", ""}}, {}});
    useServer(cupsd.socketPath());
    EXPECT_TRUE(stateOf("fax").isSuccess());
    EXPECT_EQ(CupsServer("queue fax", limits, transfer).name(), cupsd.socketPath());
}

TEST_F(CupsServerTest, ARefusalCarriesTheServersWords)
{
    servers::CupsdServer cupsd({{{"fax", ""}}, {}});
    useServer(cupsd.address());
    for (const auto* queue : {"other", "a b", "ä/ö", "../admin", "%2e"}) {
        const auto answer = stateOf(queue);
        EXPECT_FALSE(answer.isSuccess()) << queue;
        EXPECT_FALSE(answer.isForbidden()) << queue;
        EXPECT_EQ(answer.status, IPP_STATUS_ERROR_NOT_FOUND) << queue;
        EXPECT_EQ(answer.reason, "The printer or class does not exist.") << queue;
    }
    EXPECT_FALSE(stateOf(std::string(5000, 'x')).isSuccess());
}

TEST_F(CupsServerTest, AServerThatIsNotThereIsOneLine)
{
    const servers::RefusedPort refused(servers::Transport::tcp);
    const auto address = refused.address();
    for (const auto& server : {address, path("no-socket")}) {
        useServer(server);
        EXPECT_EQ(failureToConnect(),
                  "queue fax: the print server " + server +
                      " cannot be reached; start CUPS, or set CUPS_SERVER to the server that has the queue");
    }
}

TEST_F(CupsServerTest, AServerThatTakesNoConnectionIsWaitedForWithinTheLimit)
{
    servers::FullListener busy;
    useServer(busy.address());
    limits.connect = 300ms;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(failureToConnect(), HasSubstr("queue fax: the print server " + busy.address() + " "));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST_F(CupsServerTest, TheUserNeedNotWaitForAConnection)
{
    servers::FullListener busy;
    useServer(busy.address());
    limits.connect = 60s;
    transfer.cancelled = [] { return true; };
    EXPECT_EQ(failureToConnect(), "queue fax: the job was cancelled before anything of it went out");
}

TEST_F(CupsServerTest, ASilentServerIsWaitedForWithinTheLimit)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    const auto start = std::chrono::steady_clock::now();
    const auto answer = stateOf("fax");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
    EXPECT_FALSE(answer.isSuccess());
    EXPECT_EQ(answer.message, nullptr);
    EXPECT_EQ(answer.reason, "the print server " + silent.address() + " does not answer");
}

TEST_F(CupsServerTest, TheUserNeedNotWaitForAnAnswer)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 60s;
    std::atomic<int> asked = 0;
    transfer.cancelled = [&asked] { return ++asked > 3; };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(stateOf("fax").reason, "the job was cancelled");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
}

TEST_F(CupsServerTest, AServerThatTricklesIsWaitedForWithinTheLimit)
{
    servers::ServingListener trickling(servers::dripping("HTTP/1.1 100 Continue\r\n\r\n"));
    useServer(trickling.address());
    limits.answer = 300ms;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(stateOf("fax").reason, "the print server " + trickling.address() + " does not answer");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
}

TEST_F(CupsServerTest, TheUserNeedNotWaitForAServerThatTrickles)
{
    servers::ServingListener trickling(servers::dripping("HTTP/1.1 100 Continue\r\n\r\n"));
    useServer(trickling.address());
    limits.answer = 60s;
    std::atomic<int> asked = 0;
    transfer.cancelled = [&asked] { return ++asked > 3; };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(stateOf("fax").reason, "the job was cancelled");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 8s);
}

TEST_F(CupsServerTest, AServerThatHangsUpOrTalksRubbishIsOneReason)
{
    limits.answer = 2s;
    servers::ServingListener hangsUp(servers::hangingUp());
    useServer(hangsUp.address());
    EXPECT_EQ(stateOf("fax").reason, "the print server " + hangsUp.address() + " broke off the connection");
    servers::ServingListener rubbish(servers::answering("no HTTP at all\r\n\r\n"));
    useServer(rubbish.address());
    const auto answer = stateOf("fax");
    EXPECT_FALSE(answer.isSuccess());
    EXPECT_THAT(answer.reason, HasSubstr("the print server " + rubbish.address() + " "));
}

TEST_F(CupsServerTest, NobodyIsAskedForAPassword)
{
    static int prompts = 0;
    const auto prompt = [](const char*, http_t*, const char*, const char*, void*) {
        ++prompts;
        return static_cast<const char*>(nullptr);
    };
    cupsSetPasswordCB2(prompt, nullptr);
    servers::CupsdServer cupsd({{{"fax", ""}}, "Get-Printer-Attributes"});
    useServer(cupsd.address());
    const auto answer = stateOf("fax");
    EXPECT_EQ(prompts, 0);
    EXPECT_FALSE(answer.isSuccess());
    EXPECT_TRUE(answer.isForbidden());
    EXPECT_TRUE(answer.wantsPassword());
    EXPECT_EQ(answer.reason, "the print server " + cupsd.address() + " wants a password");
}

TEST_F(CupsServerTest, TheLocaleStaysWhatItIs)
{
    servers::CupsdServer cupsd({{{"fax", ""}}, {}});
    useServer(cupsd.address());
    ::setenv("LC_ALL", "C.UTF-8", 1);
    const std::string before = std::setlocale(LC_ALL, nullptr);
    stateOf("fax");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    ::unsetenv("LC_ALL");
}

TEST(IppName, IsOneLineOfUtf8)
{
    EXPECT_EQ(ippName("Brief für Zoë.ps"), "Brief für Zoë.ps");
    EXPECT_EQ(ippName("two\nlines\x01"), "two lines ");
    EXPECT_EQ(ippName("latin \xfc"), "latin ?");
    EXPECT_EQ(ippName(""), "");
}

TEST(IppName, IsCutBetweenCharacters)
{
    EXPECT_EQ(ippName(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(ippName(std::string(256, 'x')), std::string(255, 'x'));
    EXPECT_EQ(ippName(std::string(254, 'x') + "ü"), std::string(254, 'x'));
    EXPECT_EQ(ippName(std::string(253, 'x') + "ü"), std::string(253, 'x') + "ü");
}

} // namespace
} // namespace quelm::tests
