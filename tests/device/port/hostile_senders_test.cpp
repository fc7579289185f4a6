// Senders that stall, flood, or come in crowds, and a device without room: nobody else is held up.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "device/jobs/device_steps.h"
#include "tests/device/port/job_port_fixture.h"
#include "tests/device/port/sample_jobs.h"
#include "tests/servers/slapd_server.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <deque>
#include <future>
#include <thread>

namespace quelm::device {
namespace {

using namespace std::chrono_literals;
using servers::DeviceEnding;
using servers::JobSender;
using test::dscJob;
using test::pjlJob;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

using HostileSenders = JobPortFixture;

TEST_F(HostileSenders, ASenderThatFallsSilentIsDropped)
{
    settings.patience = 50ms;
    open();
    JobSender silent(address());
    JobSender stalling(address());
    stalling.send(dscJob().substr(0, 100));
    JobSender kept(address());
    kept.send(pjlJob()); // says its own end
    EXPECT_EQ(silent.waitForEnding(), DeviceEnding::closed) << "there was no job";
    EXPECT_EQ(stalling.waitForEnding(), DeviceEnding::reset);
    EXPECT_EQ(kept.waitForEnding(), DeviceEnding::closed) << "its job is kept";
    EXPECT_THAT(
        told(),
        UnorderedElementsAre(
            HasSubstr("job 1: received"),
            "job from 127.0.0.1: not kept: the sender sent nothing for 50 ms, after 100 bytes of it"));
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(HostileSenders, AJobOfAnySizeIsCutOffAtTheLargest)
{
    settings.largestJob = 100'000;
    open();
    const auto fitting = dscJob("1", 100'000 - 1001 - dscJob("1").size());
    ASSERT_LE(fitting.size(), 100'000U);
    EXPECT_EQ(send(fitting), DeviceEnding::closed);

    JobSender endless(address());
    endless.send(dscJob().substr(0, 200));
    const std::string more(1000, '%');
    while (endless.send(more)) {
    }
    EXPECT_EQ(endless.waitForEnding(), DeviceEnding::reset);
    JobSender blank(address()); // is no job, but does not end
    const std::string blanks(1000, ' ');
    while (blank.send(blanks)) {
    }
    EXPECT_EQ(blank.waitForEnding(), DeviceEnding::reset);
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(incoming(), IsEmpty());
    EXPECT_THAT(
        told()[1],
        HasSubstr("not kept: it is larger than 100000 bytes, which is the most that this device takes"));
    EXPECT_THAT(log.jobs(0, 10), SizeIs(1));
}

TEST_F(HostileSenders, ManyMoreSendersThanItServesHoldNobodyUp)
{
    settings.mostConnections = 8;
    settings.quiet = 200ms;
    open();
    std::deque<JobSender> crowd;
    for (int i = 0; i < 300; ++i)
        crowd.emplace_back(address()).send("%!");
    // Those that were there first were heard of too lately to give way; the others are turned away, which is
    // not told for each.
    const std::string words =
        "job from 127.0.0.1: not kept: 8 senders are connected, which is the most that this device serves";
    EXPECT_TRUE(soon([&] { return told().size() >= 2; }));
    EXPECT_EQ(told()[0], words);
    EXPECT_THAT(told()[1], testing::MatchesRegex(words + " \\(and [0-9]+ more\\)"));
    EXPECT_THAT(told(), SizeIs(testing::Lt(30)));
    // A second later, a new one takes the place of one of them.
    auto ending = DeviceEnding::reset;
    EXPECT_TRUE(soon([&] { return (ending = send(dscJob())) == DeviceEnding::closed; }));
    EXPECT_EQ(kept(1), dscJob());
    EXPECT_THAT(told(), Contains(HasSubstr("another sender needed its place, after 2 bytes of it")));
}

TEST_F(HostileSenders, SendersThatDripGiveWayAndOneThatPausesDoesNot)
{
    settings.mostConnections = 4;
    settings.youth = 50ms;
    settings.slowRate = 10'000;
    open();
    JobSender honest(address());
    const auto job = dscJob("1", 1'000'000);
    honest.send(std::string_view(job).substr(0, 900'000));
    waitUntilIncoming({900'000});
    std::deque<JobSender> drippers;
    for (int i = 0; i < 3; ++i)
        drippers.emplace_back(address()).send("%!PS-Adobe-3.0\n");
    waitUntilIncoming({15, 15, 15, 900'000});
    std::jthread drip([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            for (auto& dripper : drippers)
                dripper.send("%");
            static_cast<void>(drippers.front().waitForEnding(5ms));
        }
    });
    for (int newcomer = 2; newcomer <= 4; ++newcomer)
        EXPECT_TRUE(soon([&] { return send(dscJob(std::to_string(newcomer))) == DeviceEnding::closed; }));
    drip.request_stop();
    drip.join();
    EXPECT_THAT(told(), Contains(HasSubstr("another sender needed its place, after ")));
    honest.send(std::string_view(job).substr(900'000));
    honest.end();
    EXPECT_EQ(honest.waitForEnding(), DeviceEnding::closed);
}

TEST_F(HostileSenders, OneAddressDoesNotHoldMoreThanHalfOfThePlacesAgainstAnother)
{
    if (!servers::hasIpv6())
        return;
    settings.mostConnections = 4;
    settings.youth = settings.silence = 1h;
    open();
    std::deque<JobSender> crowd;
    for (int i = 0; i < 4; ++i)
        crowd.emplace_back(address()).send(dscJob().substr(0, 200));
    waitUntilIncoming({200, 200, 200, 200});
    // They are neither slow nor silent, and give way to the other address alone.
    EXPECT_EQ(send(dscJob("1")), DeviceEnding::reset);
    EXPECT_EQ(servers::sendJob(port->addresses()[1], dscJob("2")), DeviceEnding::closed);
    EXPECT_EQ(kept(1), dscJob("2"));
}

TEST_F(HostileSenders, AJobThatIsBeingKeptHoldsItsPlace)
{
    settings.mostConnections = 1;
    settings.youth = settings.silence = 0ms;
    std::promise<void> gate;
    setDeviceStepHook([isOpen = gate.get_future().share()](const char*) { isOpen.wait(); });
    open();
    JobSender first(address());
    first.send(pjlJob());
    waitUntilIncoming({pjlJob().size()});
    // Its sender stays without need: its job is taken, and the place is free when that is kept.
    for (int newcomer = 0; newcomer < 3; ++newcomer)
        EXPECT_EQ(send(dscJob("2")), DeviceEnding::reset);
    EXPECT_THAT(told(), Contains(HasSubstr("not kept: 1 senders are connected")));
    EXPECT_EQ(first.waitForEnding(1ms), DeviceEnding::open);
    gate.set_value();
    EXPECT_EQ(first.waitForEnding(), DeviceEnding::closed);
    EXPECT_EQ(kept(1), pjlJob());
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_EQ(send(dscJob("2")), DeviceEnding::closed);
    port.reset();
    setDeviceStepHook({});
}

TEST_F(HostileSenders, AJobThatComesTooSlowlyIsDropped)
{
    settings.patience = 100ms;
    settings.leastRate = 1e9;
    open();
    JobSender slow(address());
    while (slow.send("%")) {
    }
    EXPECT_EQ(slow.waitForEnding(), DeviceEnding::reset);
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(told(), ElementsAre(HasSubstr("not kept: the sender is too slow: ")));
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(HostileSenders, BehindTheMostWaitingJobsSendersAreTurnedAway)
{
    settings.mostWaitingJobs = 2;
    open();
    EXPECT_EQ(send(dscJob("1")), DeviceEnding::closed);
    EXPECT_EQ(send(dscJob("2")), DeviceEnding::closed);
    EXPECT_EQ(send(dscJob("3")), DeviceEnding::reset);
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(told().back(),
                "job from 127.0.0.1: not kept: 2 jobs are waiting, which is the most that this device keeps");
    EXPECT_THAT(log.jobs(0, 10), SizeIs(2));
    log.setFailed(1, "its document fails");
    EXPECT_EQ(send(dscJob("3")), DeviceEnding::closed);
}

TEST_F(HostileSenders, AFastSenderHoldsNoOtherUp)
{
    open();
    JobSender fast(address());
    fast.send(dscJob());
    std::jthread flood([&](const std::stop_token& stop) {
        const std::string block(std::size_t{1} << 20U, '%');
        while (!stop.stop_requested() && fast.send(block)) {
        }
    });
    for (int job = 1; job <= 10; ++job)
        EXPECT_EQ(send(dscJob(std::to_string(job))), DeviceEnding::closed);
    flood.request_stop();
    flood.join();
    fast.breakOff();
    EXPECT_TRUE(soon([&] { return port->isIdle(); }));
    EXPECT_THAT(takenJobs(), SizeIs(10));
}

TEST_F(HostileSenders, SendersAtTheSameTimeGetEachTheirOwnJob)
{
    open();
    std::vector<std::jthread> senders;
    for (int sender = 0; sender < 8; ++sender)
        senders.emplace_back([this, sender] {
            for (int job = 0; job < 5; ++job)
                EXPECT_EQ(send(pjlJob(std::to_string(100 * sender + job))), DeviceEnding::closed);
        });
    senders.clear();
    std::vector<std::string> numbers;
    for (const auto& job : log.jobs(0, 100)) {
        ASSERT_THAT(job.recipients, SizeIs(1));
        numbers.push_back(job.recipients[0].number);
        EXPECT_EQ(kept(job.number), pjlJob(numbers.back()));
    }
    std::ranges::sort(numbers);
    EXPECT_EQ(std::ranges::adjacent_find(numbers), numbers.end());
    EXPECT_THAT(numbers, SizeIs(40));
}

TEST_F(HostileSenders, AJobThatCannotBeEnteredIsNotKept)
{
    setDeviceStepHook([](const char*) { throw Error("there is no room on the disk"); });
    open();
    const auto ending = send(dscJob());
    port.reset();
    setDeviceStepHook({});
    EXPECT_EQ(ending, DeviceEnding::reset);
    EXPECT_THAT(told(), ElementsAre("job from 127.0.0.1: not kept: there is no room on the disk"));
    EXPECT_THAT(log.jobs(0, 10), IsEmpty());
    EXPECT_THAT(incoming(), IsEmpty());
}

TEST_F(HostileSenders, ADiskWithoutRoomCostsTheLargeJobAlone)
{
    EXPECT_EQ(inProcess([this] {
                  const rlimit megabyte{1U << 20U, 1U << 20U};
                  ::setrlimit(RLIMIT_FSIZE, &megabyte);
                  std::signal(SIGXFSZ, SIG_IGN);
                  open();
                  const bool refused = send(dscJob("1", 3U << 20U)) == DeviceEnding::reset;
                  const bool isTaken = send(dscJob("2")) == DeviceEnding::closed;
                  port.reset();
                  const bool said = told().front().starts_with(
                      "job from 127.0.0.1: not kept: it cannot be written to the device's folder: ");
                  return refused && isTaken && said && incoming().empty() ? 0 : 1;
              }),
              0);
}

TEST_F(HostileSenders, WithoutRoomForConnectionsItWaitsAndDoesNotSpin)
{
    EXPECT_EQ(inProcess([this] {
                  const rlimit few{64, 64};
                  ::setrlimit(RLIMIT_NOFILE, &few);
                  open();
                  JobSender first(address());
                  first.send(dscJob("1").substr(0, 50));
                  waitUntilIncoming({50});
                  std::vector<int> fillers;
                  for (int filler = 0; filler >= 0; fillers.push_back(filler))
                      filler = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
                  fillers.pop_back(); // of these, one is left to the sender and none to the device
                  ::close(fillers.back());
                  fillers.pop_back();
                  JobSender second(address());
                  const auto cpuTime = [] {
                      rusage usage{};
                      ::getrusage(RUSAGE_SELF, &usage);
                      return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000 +
                             (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
                  };
                  second.send(dscJob("2"));
                  second.end();
                  const auto before = cpuTime();
                  static_cast<void>(second.waitForEnding(500ms)); // nothing can happen
                  const auto spent = cpuTime() - before;
                  for (const int filler : fillers)
                      ::close(filler);
                  first.send(dscJob("1").substr(50));
                  first.end();
                  const bool isTaken = first.waitForEnding() == DeviceEnding::closed &&
                                       second.waitForEnding() == DeviceEnding::closed;
                  return isTaken && spent < 50 ? 0 : 1;
              }),
              0);
}

} // namespace
} // namespace quelm::device
