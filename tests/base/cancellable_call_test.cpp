// Tests of calls that are waited for within a bound.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/cancellable_call.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace quelm::tests {
namespace {

using namespace std::chrono_literals;

/// Blocks a call until the test lets it go, and tells when the call's result is gone.
class Gate {
public:
    ~Gate() { open(); }
    void open()
    {
        if (!opened_)
            promise_.set_value();
        opened_ = true;
    }
    /// A call that returns a pointer once the gate is open.
    std::function<std::shared_ptr<int>()> call()
    {
        return [gate = promise_.get_future().share(), result = result_] {
            gate.wait();
            return result;
        };
    }
    /// Waits until nobody but this test holds the result.
    bool resultIsDropped() const
    {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (result_.use_count() > 1 && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        return result_.use_count() == 1;
    }

private:
    std::promise<void> promise_;
    std::shared_ptr<int> result_ = std::make_shared<int>(42);
    bool opened_ = false;
};

Deadline in(std::chrono::milliseconds time) { return std::chrono::steady_clock::now() + time; }

TEST(CancellableCall, ReturnsTheResult)
{
    EXPECT_EQ(callBefore(in(10s), {}, [] { return std::string("done"); }), "done");
}

TEST(CancellableCall, ThrowsWhatTheCallThrows)
{
    const auto failing = []() -> int { throw std::runtime_error("no"); };
    EXPECT_THROW(static_cast<void>(callBefore(in(10s), {}, failing)), std::runtime_error);
}

TEST(CancellableCall, GivesUpAtTheLimitAndDropsTheLateResult)
{
    Gate gate;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(callBefore(in(50ms), {}, gate.call()));
    const auto taken = std::chrono::steady_clock::now() - start;
    EXPECT_GE(taken, 50ms);
    EXPECT_LT(taken, 5s);
    gate.open();
    EXPECT_TRUE(gate.resultIsDropped());
}

TEST(CancellableCall, GivesUpWhenItIsCancelled)
{
    Gate gate;
    int asked = 0;
    const Cancellation cancelled = [&asked] { return ++asked == 2; };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(callBefore(in(60s), cancelled, gate.call()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(asked, 2);
    gate.open();
    EXPECT_TRUE(gate.resultIsDropped());
}

TEST(CancellableCall, LeavesSignalsToTheCaller)
{
    const auto blocked = [] {
        sigset_t mask;
        pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        return sigismember(&mask, SIGINT) == 1;
    };
    EXPECT_EQ(callBefore(in(10s), {}, blocked), true);
    EXPECT_FALSE(blocked());
}

} // namespace
} // namespace quelm::tests
