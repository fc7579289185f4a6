// Senders of all kinds at a device, each of whom gets what is theirs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/servers/job_sender.h"
#include "tests/servers/slapd_server.h"

#include <gmock/gmock.h>

#include <deque>

namespace journeys {
namespace {

using servers::DeviceEnding;
using servers::JobSender;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

using DeviceSendersJourney = DeviceJourney;

TEST_F(DeviceSendersJourney, OthersThatMisbehaveHoldNoDriverUp)
{
    const auto letter = document("letter.ps", "Hello");
    EXPECT_EQ(driver({"fax", letter, "--to", "Eve=1009", "--output", path("job")}).status, 0);
    const auto job = content("job");
    serve();

    JobSender stalling(address());
    stalling.send(job.substr(0, job.size() / 2));
    JobSender lying(address()); // of a length that does not come
    lying.send("%!PS-Adobe-3.0\n%%BeginBinary: 4000000000\n");
    JobSender endless(address());
    for (int block = 0; block < 20; ++block)
        EXPECT_TRUE(endless.send("%" + std::string(std::size_t{1} << 20U, 'x')));
    std::deque<JobSender> silent;
    for (int i = 0; i < 30; ++i)
        silent.emplace_back(address());

    send(letter, {"--to", "Ann=1001"});
    EXPECT_TRUE(hasSaid("job 1: done, 1 of 1 sent"));
    EXPECT_THAT(receivedPages("1001"), SizeIs(1));

    for (const char byte : job.substr(job.size() / 2))
        ASSERT_TRUE(stalling.send({&byte, 1}));
    stalling.end();
    EXPECT_EQ(stalling.waitForEnding(), DeviceEnding::closed);
    EXPECT_TRUE(hasSaid("job 2: done, 1 of 1 sent"));
    EXPECT_THAT(receivers(), ElementsAre("1001", "1009"));
    EXPECT_EQ(stalling.answer() + lying.answer() + endless.answer(), "");
}

TEST_F(DeviceSendersJourney, JobsComeOverIpv6)
{
    serve();
    EXPECT_EQ(address(1).empty(), !servers::hasIpv6());
    if (!servers::hasIpv6())
        return;
    const auto result =
        driver({"fax", document("letter.ps", "Hello"), "--to", "Ann=1001", "--device", address(1)});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_TRUE(hasSaid("job 1: fax to 1 recipient from [::1]"));
    EXPECT_TRUE(hasSaid("job 1: done, 1 of 1 sent"));
}

TEST_F(DeviceSendersJourney, ItListensOnLoopbackAlone)
{
    serve();
    const auto addresses = said("jobs: ");
    EXPECT_THAT(addresses.front(), HasSubstr("jobs: 127.0.0.1:"));
    for (const auto& line : addresses)
        EXPECT_TRUE(line.starts_with("jobs: 127.0.0.1:") || line.starts_with("jobs: [::1]:")) << line;
}

} // namespace
} // namespace journeys
