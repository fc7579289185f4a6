// Devices that are killed or stopped, and started again: nobody is forgotten, and nobody called twice.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/servers/job_sender.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using servers::DeviceEnding;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class DeviceRestartJourney : public DeviceJourney {
protected:
    /// A job for three recipients, of whom the second one's number is busy at first.
    std::string job() const
    {
        EXPECT_EQ(
            driver({"fax", document("letter.ps", "Hello"), "--to", "Ann=1001", "--to", "Bob=1002", "--to",
                    "Cleo=1003", "--resolution", "fine", "--confirmation", "--output", path("job")})
                .status,
            0);
        return content("job");
    }
    Arguments exchange() const { return {"--exchange", file("exchange.conf", "[number 1002]\nbusy = 1\n")}; }
    Arguments exchangeUntilIdle() const
    {
        auto options = exchange();
        options.emplace_back("--until-idle");
        return options;
    }

    /// True while a receiver has begun to keep a page.
    bool isMidCall() const
    {
        for (const auto& entry : fs::directory_iterator(folder / "state/incoming"))
            if (entry.path().filename().string().find("call") != std::string::npos)
                return true;
        return false;
    }

    /// Sends the job to the device that serves, and waits until a call is under way behind so many others.
    /// False when all calls were made meanwhile.
    bool catchesCallOf(const std::string& stream, std::size_t behind = 0) const
    {
        EXPECT_EQ(servers::sendJob(address(), stream), DeviceEnding::closed);
        EXPECT_TRUE(soon([&] { return said("call ").size() >= behind; }));
        bool isCaught = false;
        EXPECT_TRUE(soon([&] {
            isCaught = isMidCall();
            return isCaught || isAllDone();
        }));
        return isCaught;
    }
    bool isAllDone() const { return exists("state/reports/job-1.pdf"); }

    /// Starts new devices by `stops`, which stops each while it is at work and is true when it was in time,
    /// until one has work left: a call lasts for milliseconds, and a test may wait longer for a processor.
    template <typename Action>
    bool leavesWork(Action stops)
    {
        for (int attempt = 0; attempt < 20; ++attempt) {
            forgetDevice();
            if (stops() && !isAllDone())
                return true;
        }
        return false;
    }

    void expectEachReceivedOnce(const std::string& when) const
    {
        EXPECT_THAT(receivers(), ElementsAre("1001", "1002", "1003")) << when;
        for (const auto* number : {"1001", "1002", "1003"}) {
            EXPECT_THAT(received(number), SizeIs(1)) << number << " " << when;
            EXPECT_THAT(receivedPages(number), SizeIs(1)) << number << " " << when;
        }
        EXPECT_TRUE(fs::is_empty(folder / "state/incoming")) << when;
        EXPECT_TRUE(exists("state/reports/job-1.pdf")) << when;
    }
};

TEST_F(DeviceRestartJourney, KilledBehindAnyOfItsWordsItGoesOnWhereItWas)
{
    const auto stream = job();
    constexpr std::size_t wordsOfAWholeRun = 8;
    for (std::size_t words = 1; words <= wordsOfAWholeRun; ++words) {
        forgetDevice();
        serve(exchange());
        const auto atStart = said().size();
        ASSERT_EQ(servers::sendJob(address(), stream), DeviceEnding::closed);
        EXPECT_TRUE(soon([&] { return said().size() >= atStart + words; }));
        killDevice();
        serve(exchange()); // all may be done by then: it would wait for another job
        EXPECT_TRUE(soon([this] {
            return exists("state/reports/job-1.pdf") && receivers().size() == 3 &&
                   fs::is_empty(folder / "state/incoming");
        }));
        expectEachReceivedOnce("killed behind " + std::to_string(words) + " lines");
    }
}

TEST_F(DeviceRestartJourney, KilledInMidCallItMakesThatCallAgain)
{
    const auto stream = job();
    for (std::size_t behind = 0; behind < 3; ++behind) {
        ASSERT_TRUE(leavesWork([&] {
            serve(exchange());
            const bool isCaught = catchesCallOf(stream, behind);
            killDevice();
            return isCaught;
        }));
        EXPECT_EQ(runDevice(exchangeUntilIdle()).status, 0);
        expectEachReceivedOnce("killed in mid-call");
    }
}

TEST_F(DeviceRestartJourney, KilledTwiceItStillGoesOn)
{
    const auto stream = job();
    ASSERT_TRUE(leavesWork([&] {
        serve(exchange());
        EXPECT_EQ(servers::sendJob(address(), stream), DeviceEnding::closed);
        EXPECT_TRUE(hasSaid("call 1:"));
        killDevice();
        serve(exchange());
        killDevice();
        return true;
    }));
    EXPECT_EQ(runDevice(exchangeUntilIdle()).status, 0);
    expectEachReceivedOnce("killed twice");
}

TEST_F(DeviceRestartJourney, KilledBeforeAJobIsWholeItHasNoneAndItsSenderKnows)
{
    const auto stream = job();
    serve(exchange());
    servers::JobSender sender(address());
    sender.send(stream);
    EXPECT_TRUE(soon([this] { return !fs::is_empty(folder / "state/incoming"); }));
    killDevice();
    EXPECT_EQ(sender.waitForEnding(), DeviceEnding::reset);
    serve(exchange());
    EXPECT_TRUE(fs::is_empty(folder / "state/incoming"));
    EXPECT_EQ(servers::sendJob(address(), stream), DeviceEnding::closed);
    EXPECT_TRUE(hasSaid("confirmation sheet"));
    expectEachReceivedOnce("sent again");
}

TEST_F(DeviceRestartJourney, CtrlCBreaksACallOffAndTheNextStartMakesItAgain)
{
    const auto stream = job();
    for (const int signal : {SIGINT, SIGTERM}) {
        ASSERT_TRUE(leavesWork([&] {
            bool isCaught = false;
            const auto result = runDevice(exchange(), [&](int process) {
                isCaught = catchesCallOf(stream);
                ::kill(process, signal);
            });
            EXPECT_EQ(result.status, 128 + signal) << result.errors;
            EXPECT_EQ(result.errors, "");
            return isCaught;
        }));
        EXPECT_EQ(runDevice(exchangeUntilIdle()).status, 0);
        expectEachReceivedOnce("stopped in mid-call");
    }
}

/// The terminal sends the signal to all programs that the device has started, too.
TEST_F(DeviceRestartJourney, CtrlCAtATerminalWhileItDrawsThePagesCostsNoJob)
{
    const auto slow =
        file("slow.ps", "%!PS-Adobe-3.0\n0 1 10000000 { pop } for\n"
                        "/Helvetica findfont 12 scalefont setfont 72 700 moveto (Hello) show showpage\n"
                        "%%EOF\n");
    for (int round = 0; round < 3; ++round) {
        const auto result = runDevice(
            {},
            [&](int process) {
                if (round == 0)
                    send(slow, {"--to", "Ann=1001"});
                EXPECT_TRUE(soon([this] {
                    for (const auto& entry : fs::directory_iterator(folder / "state/jobs/1"))
                        if (entry.path().filename() != "job")
                            return true;
                    return false;
                }));
                ::kill(-process, SIGINT);
            },
            servers::systemProgram("setsid"));
        EXPECT_EQ(result.status, 128 + SIGINT) << result.errors;
        EXPECT_THAT(said("job 1: failed"), IsEmpty());
    }
    EXPECT_EQ(runDevice({"--until-idle"}).status, 0);
    EXPECT_THAT(receivedPages("1001"), SizeIs(1));
}

TEST_F(DeviceRestartJourney, CtrlCDropsAJobThatIsNotWhole)
{
    const auto result = runDevice({}, [&](int process) {
        servers::JobSender sender(address());
        sender.send("%!PS-Adobe-3.0\n");
        EXPECT_TRUE(soon([this] { return !fs::is_empty(folder / "state/incoming"); }));
        ::kill(process, SIGINT);
        EXPECT_EQ(sender.waitForEnding(), DeviceEnding::reset);
    });
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_THAT(said().back(), HasSubstr("not kept: the device stops"));
    EXPECT_TRUE(fs::is_empty(folder / "state/incoming"));
}

TEST_F(DeviceRestartJourney, UntilIdleWaitsForItsFirstJobAndForEveryConnection)
{
    serve({"--until-idle"});
    servers::JobSender first(address());
    send(document("letter.ps", "Hello"), {"--to", "Ann=1001"});
    EXPECT_TRUE(hasSaid("job 1: done, 1 of 1 sent"));
    EXPECT_EQ(first.waitForEnding(std::chrono::milliseconds(0)), DeviceEnding::open);
    EXPECT_TRUE(device->running()) << "somebody is connected";
    first.end();
    EXPECT_EQ(first.waitForEnding(), DeviceEnding::closed);
    EXPECT_TRUE(deviceEnds());
    // So does the next one, though the folder has a job that is done.
    const auto result = runDevice({"--until-idle"}, [&](int) {
        send(document("letter.ps", "Hello"), {"--to", "Bob=1002"});
    });
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_TRUE(hasSaid("job 2: done, 1 of 1 sent"));
}

TEST_F(DeviceRestartJourney, TheClockGoesOnWhereItWas)
{
    const auto momentBehind = [this](const std::string& sheet, const std::string& word) {
        const auto text = content("state/reports/" + sheet);
        const auto at = text.find(word);
        constexpr std::size_t length = 19; // "2026-11-22 21:43:10"
        const auto begin = text.find("20", at == std::string::npos ? at : at + word.size());
        return begin == std::string::npos ? text : text.substr(begin, length);
    };
    for (const auto* number : {"1002", "1001"}) {
        const auto result = runDevice(exchangeUntilIdle(), [&](int) {
            send(document("letter.ps", "Hello"), {"--to", "Ann=" + std::string(number), "--confirmation"});
        });
        EXPECT_EQ(result.status, 0) << result.errors;
    }
    // The second call of the first job was made a minute behind its first, of which nobody waited for any.
    const auto lastCall = momentBehind("job-1.txt", "\n  1  1002");
    EXPECT_GT(lastCall, momentBehind("job-1.txt", "Received:"));
    EXPECT_GT(momentBehind("job-2.txt", "Received:"), lastCall);
}

TEST_F(DeviceRestartJourney, UntilIdleFailsWhenASheetWasNotWritten)
{
    const auto result = runDevice({"--until-idle"}, [&](int) {
        fs::remove_all(folder / "state/reports");
        send(document("letter.ps", "Hello"), {"--to", "Ann=1001", "--confirmation"});
    });
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("the confirmation sheet of job 1 was not written; "));
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_THAT(said("trouble: "), SizeIs(1));
    EXPECT_EQ(runDevice({"--until-idle"}).status, 0);
    EXPECT_TRUE(exists("state/reports/job-1.pdf"));
}

} // namespace
} // namespace journeys
