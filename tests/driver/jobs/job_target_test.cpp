// Tests of the way from a target's name to what takes the job there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_target.h"

#include "driver/queue/queue_hold.h"
#include "tests/driver/jobs/cups_support.h"
#include "tests/servers/cupsd_server.h"
#include "tests/servers/print_listener.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class JobTargetTest : public CupsTest {
protected:
    Receipt send(const JobTarget& target) const
    {
        const Document document = Document::open(letter);
        const auto destination = openDestination(target, {document.name(), "ann"}, &document);
        destination->sink().write("the job");
        return destination->deliver();
    }

    std::string letter = file("letter.ps", postScriptPages({"One"}));
};

TEST_F(JobTargetTest, AFileTakesTheJob)
{
    EXPECT_EQ(send(FileTarget{path("fax.job")}).place, path("fax.job"));
    EXPECT_EQ(contentOf(path("fax.job")), "the job");
}

TEST_F(JobTargetTest, TheDocumentItselfIsNoTarget)
{
    const auto before = contentOf(letter);
    EXPECT_THAT(errorLine([&] { send(FileTarget{letter}); }), HasSubstr(letter));
    EXPECT_EQ(contentOf(letter), before);
}

TEST_F(JobTargetTest, AnAddressIsADevice)
{
    servers::PrintListener device(servers::Manner::takesAll);
    EXPECT_EQ(send(parseNetworkAddress(device.address())).place, "device " + device.address());
    EXPECT_EQ(device.waitForEnding(), servers::Ending::closed);
    EXPECT_EQ(device.received(), "the job");
    EXPECT_THAT(namesInFolder(), ElementsAre("letter.ps"));
}

TEST_F(JobTargetTest, AQueueListsTheJobUnderTheDocumentsNameAsTheUsers)
{
    servers::CupsdServer cupsd({{{"fax", ""}}, {}});
    useServer(cupsd.address());
    EXPECT_EQ(send(QueueTarget{"fax"}).job, 1);
    const auto printed = cupsd.printed(1);
    EXPECT_EQ(printed.content, "the job");
    EXPECT_EQ(printed.title, "letter.ps");
    EXPECT_EQ(printed.user, "ann");
}

TEST_F(JobTargetTest, AQueueIsToldTheTokenAndTheTimeOnTheServerThatIsNamed)
{
    servers::CupsdServer cupsd({{{"fax", ""}}, {}});
    useServer(path("no-socket"));
    const std::time_t until = std::time(nullptr) + 3600;
    int number = 0;
    const auto destination = openDestination(
        QueueTarget{"fax", cupsd.address()},
        {"letter.ps", "ann", "5f3a9c2e", until, [&number](int job) { number = job; }}, nullptr);
    destination->sink().write("the job");
    EXPECT_EQ(destination->deliver().job, 1);
    EXPECT_EQ(number, 1);
    directly = cupsd.address();
    const auto job = waitForJob(1, [](const ServerJob&) { return true; });
    EXPECT_EQ(job.name, "letter.ps [quelm 5f3a9c2e]");
    EXPECT_TRUE(isHeldUntil(job, until));
}

} // namespace
} // namespace quelm::tests
