// Calls on threads of their own, and what is left of those threads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/bounded_call.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <future>
#include <stdexcept>
#include <thread>

namespace {

using quelm::Deadline;
using quelm::startCall;
using std::chrono::milliseconds;

Deadline after(milliseconds time) { return std::chrono::steady_clock::now() + time; }

/// Says when its thread is over: a thread's own objects go last, and this one takes its time.
struct SlowGoodbye {
    std::atomic<bool>* over = nullptr;

    ~SlowGoodbye()
    {
        std::this_thread::sleep_for(milliseconds(100));
        *over = true;
    }
};

TEST(BoundedCallTest, AnAnswerComesFromAThreadOfItsOwnThatTakesNoSignals)
{
    auto masked = startCall([] {
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        return sigismember(&mask, SIGUSR1) == 1;
    });
    EXPECT_TRUE(masked.get());
    sigset_t own;
    pthread_sigmask(SIG_SETMASK, nullptr, &own);
    EXPECT_EQ(sigismember(&own, SIGUSR1), 0);
}

TEST(BoundedCallTest, WaitingEndsWhileTheCallGoesOn)
{
    std::promise<void> goOn;
    auto call = startCall([gate = goOn.get_future()]() mutable {
        gate.wait();
        return 7;
    });
    EXPECT_FALSE(call.isBackBefore(after(milliseconds(10))));
    goOn.set_value();
    EXPECT_TRUE(call.isBackBefore(after(std::chrono::minutes(1))));
    EXPECT_EQ(call.get(), 7);
}

TEST(BoundedCallTest, WhatTheCallThrowsIsThrownToTheOneWhoAsks)
{
    auto call = startCall([]() -> int { throw std::runtime_error("no"); });
    EXPECT_TRUE(call.isBackBefore(after(std::chrono::minutes(1))));
    EXPECT_THROW(call.get(), std::runtime_error);
}

TEST(BoundedCallTest, ACallThatCameBackLeavesNoThreadBehind)
{
    std::atomic<bool> over = false;
    {
        auto call = startCall([&over] {
            thread_local SlowGoodbye goodbye;
            goodbye.over = &over;
        });
        ASSERT_TRUE(call.isBackBefore(after(std::chrono::minutes(1))));
    }
    EXPECT_TRUE(over);
}

TEST(BoundedCallTest, ACallThatStillBlocksKeepsNobodyWaiting)
{
    std::promise<void> goOn;
    std::promise<void> wentOn;
    auto seen = wentOn.get_future();
    {
        auto call = startCall([gate = goOn.get_future(), done = std::move(wentOn)]() mutable {
            gate.wait();
            done.set_value();
        });
        EXPECT_FALSE(call.isBackBefore(after(milliseconds(0))));
    } // would never end if it waited for the call
    goOn.set_value();
    EXPECT_EQ(seen.wait_for(std::chrono::minutes(1)), std::future_status::ready);
}

} // namespace
