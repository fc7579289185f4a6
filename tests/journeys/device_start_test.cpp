// Devices that cannot begin say why in one line, and leave nothing running.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/servers/listeners.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace journeys {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DeviceStartJourney : public DeviceJourney {
protected:
    /// It says nothing but this line, and leaves the start of the next device free.
    void expectRefusal(const Arguments& options, const std::string& words)
    {
        const auto result = runDevice(options);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, AllOf(StartsWith("quelm-device: "), HasSubstr(words), EndsWith("\n")));
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
        EXPECT_THAT(said(), IsEmpty());
    }
};

TEST_F(DeviceStartJourney, APortThatIsTakenIsNamed)
{
    const servers::SilentListener other;
    expectRefusal({"--port", std::to_string(other.port())},
                  other.address() +
                      ": cannot listen there: another program has this port; end it, or choose");
    serve();
}

TEST_F(DeviceStartJourney, AnAddressOfAnotherComputerIsNamed)
{
    expectRefusal({"--address", "192.0.2.1"}, "192.0.2.1:");
    expectRefusal({"--address", "fax.example"}, "\"fax.example\" is no numeric address");
}

TEST_F(DeviceStartJourney, AnExchangeThatCannotBeIsNamed)
{
    expectRefusal({"--exchange", path("none.conf")}, "none.conf");
    expectRefusal({"--exchange", file("wrong.conf", "[number 12]\nanswer = perhaps\n")}, "wrong.conf");
}

TEST_F(DeviceStartJourney, AFolderThatAnotherDeviceHasIsNamed)
{
    serve();
    const auto before = said();
    const auto result = runDevice({});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, AllOf(StartsWith("quelm-device: "), HasSubstr("state")));
    EXPECT_EQ(said(), before);
    EXPECT_TRUE(device->running());
}

TEST_F(DeviceStartJourney, AFolderThatCannotBeMadeIsNamed)
{
    file("state", "a file");
    expectRefusal({}, "state");
}

TEST_F(DeviceStartJourney, OneAddressInsteadOfLoopbackIsEnough)
{
    serve({"--address", "127.0.0.2", "--address", "127.0.0.2"});
    EXPECT_THAT(said("jobs: "), testing::ElementsAre(StartsWith("jobs: 127.0.0.2:")));
    forgetDevice();
    // SNMP follows, and the status pages do not: they show what others were sent.
    auto arguments = deviceCommand({"--address", "127.0.0.2", "--snmp", "0", "--panel", "0"}).arguments;
    std::erase(arguments, "--no-panel");
    serveBy(arguments);
    EXPECT_THAT(said("snmp: "), testing::ElementsAre(StartsWith("snmp: 127.0.0.2:")));
    EXPECT_THAT(said("panel: "), testing::ElementsAre(StartsWith("panel: http://127.0.0.1:")));
}

TEST_F(DeviceStartJourney, AClosedStandardOutputEndsNothing)
{
    Request request;
    request.arguments = deviceCommand({"--until-idle", "--port", "0"}).arguments;
    request.withoutStreams = {1};
    request.environment = deviceCommand().environment;
    // Nobody hears where it listens: it has a job from before.
    serve({"--real-time"});
    send(document("letter.ps", "Hello"), {"--to", "Ann=1001"});
    killDevice();
    const auto result = runProgram(request);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(receivers(), testing::ElementsAre("1001"));
}

TEST_F(DeviceStartJourney, ItsWordsAreEnglishInGermanToo)
{
    language = "de";
    serve({"--until-idle"});
    send(document("letter.ps", "Hello"), {"--to", "Ann=1001"});
    EXPECT_TRUE(deviceEnds());
    EXPECT_TRUE(hasSaid("job 1: received from 127.0.0.1, "));
    EXPECT_TRUE(hasSaid("job 1: fax to 1 recipient from 127.0.0.1, 1 page"));
    EXPECT_TRUE(hasSaid("job 1: done, 1 of 1 sent"));
}

} // namespace
} // namespace journeys
