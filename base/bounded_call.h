// Waits for a call that may block, and no longer than until a deadline.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_BOUNDED_CALL_H
#define BASE_BOUNDED_CALL_H

#include <chrono>
#include <csignal>
#include <future>
#include <thread>
#include <type_traits>
#include <utility>

namespace quelm {

using Deadline = std::chrono::steady_clock::time_point;

/// A call on a thread of its own. The thread of a call that came back ends with this object; one that
/// still blocks is left to itself.
template <class Result>
class StartedCall {
public:
    StartedCall(std::thread thread, std::future<Result> result)
        : result_(std::move(result)), thread_(std::move(thread))
    {
    }
    StartedCall(StartedCall&&) noexcept = default;
    StartedCall& operator=(StartedCall&&) = delete;
    ~StartedCall()
    {
        if (!thread_.joinable())
            return;
        // A thread on its way out still has memory of the libraries that it called: a program that
        // ended meanwhile would seem to leak it.
        if (isBack_)
            thread_.join();
        else
            thread_.detach();
    }

    /// True as soon as the call came back, false when it did not until `deadline`.
    [[nodiscard]] bool isBackBefore(Deadline deadline)
    {
        isBack_ = isBack_ || result_.wait_until(deadline) == std::future_status::ready;
        return isBack_;
    }

    /// What the call returned; what it threw is thrown here. Waits for it without a limit, and works once.
    Result get()
    {
        isBack_ = true;
        return result_.get();
    }

private:
    std::future<Result> result_;
    std::thread thread_;
    bool isBack_ = false;
};

/// Starts `call` on a thread of its own, which runs on to its end whoever waits for it: it must own
/// all that it uses. Throws std::system_error when no thread can be had.
template <class Call>
auto startCall(Call call) -> StartedCall<std::invoke_result_t<Call>>
{
    std::packaged_task<std::invoke_result_t<Call>()> task(std::move(call));
    auto result = task.get_future();
    // The thread starts with the caller's mask; signals are for the threads that expect them.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread thread(std::move(task));
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return {std::move(thread), std::move(result)};
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
}

} // namespace quelm

#endif
