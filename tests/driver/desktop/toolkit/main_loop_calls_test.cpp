// Tests of what other threads have to say to the main loop.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/main_loop_calls.h"

#include "tests/driver/desktop/main_loop.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

namespace quelm {
namespace {

TEST(MainLoopCallsTest, CallsComeFromTheMainLoopInTheirOrder)
{
    MainLoopCalls calls;
    std::vector<int> told;
    bool isHere = true;
    const auto here = std::this_thread::get_id();
    std::thread([&] {
        for (int i = 0; i < 3; ++i)
            calls.add([&, i] {
                told.push_back(i);
                isHere = isHere && std::this_thread::get_id() == here;
            });
    }).join();
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(loopUntil([&] { return told.size() == 3; }));
    EXPECT_EQ(told, (std::vector{0, 1, 2}));
    EXPECT_TRUE(isHere);
}

TEST(MainLoopCallsTest, NothingIsCalledBehindTheEnd)
{
    bool isCalled = false;
    std::optional<MainLoopCalls> calls(std::in_place);
    calls->add([&] { isCalled = true; });
    calls.reset();
    loopUntilIdle();
    EXPECT_FALSE(isCalled);
}

} // namespace
} // namespace quelm
