// Tests of what a print server says of a job, and of the names that jobs are found by.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/server_job.h"

#include "base/texts.h"
#include "driver/jobs/cups_destination.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/listeners.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;
using servers::CupsdServer;
using testing::HasSubstr;

TEST(ServerJobName, HoldsTheTokenBehindTheTitle)
{
    EXPECT_EQ(serverJobName("letter.ps", "5f3a9c2e"), "letter.ps [quelm 5f3a9c2e]");
    EXPECT_EQ(serverJobName("", "5f3a9c2e"), "Fax [quelm 5f3a9c2e]");
    EXPECT_EQ(serverJobName("letter.ps", ""), "letter.ps");
    EXPECT_EQ(serverJobName("", ""), "Fax");
}

TEST(ServerJobName, IsCutInItsTitleOnly)
{
    const std::string suffix = " [quelm 5f3a9c2e]";
    const std::size_t room = longestIppName - suffix.size();
    EXPECT_EQ(serverJobName(std::string(1000, 'x'), "5f3a9c2e"), std::string(room, 'x') + suffix);
    const auto cut = serverJobName(std::string(room - 1, 'x') + "ü", "5f3a9c2e");
    EXPECT_EQ(cut, std::string(room - 1, 'x') + suffix);
    EXPECT_TRUE(isUtf8(cut));
    EXPECT_EQ(serverJobName(std::string(room - 2, 'x') + "ü", "5f3a9c2e").size(), longestIppName);
}

TEST(ServerJobName, BearsItsOwnTokenOnly)
{
    EXPECT_TRUE(bearsToken("letter.ps [quelm 5f3a9c2e]", "5f3a9c2e"));
    for (const auto* other : {"letter.ps", "letter.ps [quelm 5f3a9c2f]", "[quelm 5f3a9c2e] letter.ps",
                              "5f3a9c2e", "letter.ps [quelm 15f3a9c2e]", ""})
        EXPECT_FALSE(bearsToken(other, "5f3a9c2e")) << other;
    EXPECT_FALSE(bearsToken("letter.ps", ""));
    EXPECT_FALSE(bearsToken("letter.ps [quelm ]", ""));
}

class ServerJobTest : public CupsTest {
protected:
    static std::string send(const std::string& queue)
    {
        const auto destination = openQueue({queue, "letter.ps", "ann"});
        destination->sink().write("the job");
        return destination->deliver().place;
    }

    Transfer transfer;
};

TEST_F(ServerJobTest, APrintedJobSaysSo)
{
    CupsdServer cupsd({{{"fax"}}});
    useServer(cupsd.address());
    send("fax");
    EXPECT_EQ(cupsd.printed(1).content, "the job");
    CupsServer server("queue fax", limits, transfer);
    const auto answer = askForServerJob(server, "fax", "ann", 1);
    EXPECT_EQ(answer.trouble, "");
    ASSERT_TRUE(answer.job);
    EXPECT_EQ(answer.job->number, 1);
    EXPECT_EQ(answer.job->name, "letter.ps");
    EXPECT_EQ(answer.job->wasProcessed, true);
    EXPECT_FALSE(answer.job->isIncoming);
    EXPECT_FALSE(answer.job->isEndedEarly());
}

TEST_F(ServerJobTest, AJobWithoutItsDocumentIsIncoming)
{
    CupsdServer cupsd({{{"fax"}}});
    useServer(cupsd.address());
    CupsServer server("queue fax", limits, transfer);
    const auto created =
        server.ask(newQueueRequest(IPP_OP_CREATE_JOB, "fax", "ann"), queueResource("fax")).integer("job-id");
    auto answer = askForServerJob(server, "fax", "ann", created);
    ASSERT_TRUE(answer.job);
    EXPECT_TRUE(answer.job->isIncoming);
    EXPECT_EQ(answer.job->wasProcessed, false);
    EXPECT_EQ(answer.job->documents, 0);
    EXPECT_EQ(cancelServerJob(server, "fax", "ann", created), CancelEnd::cancelled);
    answer = askForServerJob(server, "fax", "ann", created);
    ASSERT_TRUE(answer.job);
    EXPECT_TRUE(answer.job->isEndedEarly());
    EXPECT_EQ(cancelServerJob(server, "fax", "ann", created), CancelEnd::cancelled) << "by now";
}

TEST_F(ServerJobTest, AJobThatIsNotThereIsNoTrouble)
{
    CupsdServer cupsd({{{"fax"}}});
    useServer(cupsd.address());
    CupsServer server("queue fax", limits, transfer);
    const auto answer = askForServerJob(server, "fax", "ann", 7);
    EXPECT_FALSE(answer.job);
    EXPECT_EQ(answer.trouble, "");
    EXPECT_EQ(cancelServerJob(server, "fax", "ann", 7), CancelEnd::gone);
}

TEST_F(ServerJobTest, WhatWasPrintedOrIsAnothersIsNotCancelled)
{
    servers::PrinterQueue paused{"slow"};
    paused.pausedWith = "wait";
    CupsdServer cupsd({{{"fax"}, paused}});
    useServer(cupsd.address());
    send("fax");
    cupsd.printed(1);
    waitForJob(1, [](const ServerJob& job) { return job.state == IPP_JSTATE_COMPLETED; });
    send("slow");
    CupsServer server("queue fax", limits, transfer);
    EXPECT_EQ(cancelServerJob(server, "fax", "ann", 1), CancelEnd::refused);
    EXPECT_EQ(cancelServerJob(server, "slow", "bob", 2), CancelEnd::refused);
    EXPECT_EQ(cancelServerJob(server, "slow", "ann", 2), CancelEnd::cancelled);
}

TEST_F(ServerJobTest, AServerThatDoesNotAnswerIsTrouble)
{
    servers::SilentListener silent;
    useServer(silent.address());
    limits.answer = 300ms;
    CupsServer server("queue fax", limits, transfer);
    const auto answer = askForServerJob(server, "fax", "ann", 1);
    EXPECT_FALSE(answer.job);
    EXPECT_THAT(answer.trouble, HasSubstr(" does not answer"));
    EXPECT_EQ(cancelServerJob(server, "fax", "ann", 1), CancelEnd::refused);
}

} // namespace
} // namespace quelm::tests
