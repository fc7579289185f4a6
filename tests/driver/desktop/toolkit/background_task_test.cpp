// Tests of work on threads whose end the main loop is told of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/background_task.h"

#include "tests/driver/desktop/main_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>
#include <thread>

namespace quelm {
namespace {

/// Work that goes on until it is stopped.
void untilStopped(const std::stop_token& stop)
{
    std::binary_semaphore stopped(0);
    const std::stop_callback wake(stop, [&stopped] { stopped.release(); });
    stopped.acquire();
}

TEST(BackgroundTaskTest, TheEndIsToldOnTheLoopsThread)
{
    BackgroundTask task;
    std::thread::id worker;
    std::thread::id teller;
    task.start([&](const std::stop_token&) { worker = std::this_thread::get_id(); },
               [&] { teller = std::this_thread::get_id(); });
    EXPECT_TRUE(task.running());
    ASSERT_TRUE(loopUntil([&] { return !task.running(); }));
    EXPECT_EQ(teller, std::this_thread::get_id());
    EXPECT_NE(worker, teller);
}

TEST(BackgroundTaskTest, TheEndIsNeverToldFromWithinStart)
{
    BackgroundTask task;
    bool told = false;
    std::atomic<bool> done = false;
    task.start([&](const std::stop_token&) { done = true; }, [&] { told = true; });
    while (!done)
        std::this_thread::yield();
    EXPECT_FALSE(told);
    EXPECT_TRUE(loopUntil([&] { return told; }));
}

TEST(BackgroundTaskTest, CancelledWorkIsToldOf)
{
    BackgroundTask task;
    bool told = false;
    task.start(untilStopped, [&] { told = true; });
    task.cancel();
    EXPECT_TRUE(loopUntil([&] { return told; }));
    EXPECT_FALSE(task.running());
}

TEST(BackgroundTaskTest, WorkThatWasReplacedIsNotToldOf)
{
    BackgroundTask task;
    int told = 0;
    task.start(untilStopped, [&] { told = 1; });
    task.start([](const std::stop_token&) {}, [&] { told = 2; });
    EXPECT_TRUE(loopUntil([&] { return !task.running(); }));
    loopUntilIdle();
    EXPECT_EQ(told, 2);
}

TEST(BackgroundTaskTest, WorkThatWasGivenUpIsNotToldOf)
{
    BackgroundTask task;
    bool told = false;
    std::atomic<bool> ended = false;
    task.start(
        [&](const std::stop_token& stop) {
            untilStopped(stop);
            ended = true;
        },
        [&] { told = true; });
    task.giveUp();
    EXPECT_FALSE(task.running());
    while (!ended)
        std::this_thread::yield();
    loopUntilIdle();
    EXPECT_FALSE(told);
}

TEST(BackgroundTaskTest, TheEndMayStartTheNextWork)
{
    BackgroundTask task;
    int told = 0;
    const auto nothing = [](const std::stop_token&) {};
    task.start(nothing, [&] {
        ++told;
        task.start(nothing, [&] { ++told; });
    });
    EXPECT_TRUE(loopUntil([&] { return told == 2; }));
}

TEST(BackgroundTaskTest, ItsEndStopsTheWorkAndTellsNobody)
{
    bool told = false;
    std::atomic<bool> ended = false;
    {
        BackgroundTask task;
        task.start(
            [&](const std::stop_token& stop) {
                untilStopped(stop);
                ended = true;
            },
            [&] { told = true; });
    }
    EXPECT_TRUE(ended);
    loopUntilIdle();
    EXPECT_FALSE(told);
}

} // namespace
} // namespace quelm
