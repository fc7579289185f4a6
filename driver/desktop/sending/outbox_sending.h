// Sends what waits in the outbox while the desktop is open.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_OUTBOX_SENDING_H
#define DRIVER_DESKTOP_SENDING_OUTBOX_SENDING_H

#include "driver/desktop/toolkit/main_loop_calls.h"
#include "driver/outbox/outbox.h"
#include "driver/outbox/outbox_worker.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace quelm {

/// Who hears of the outbox's jobs; all are called on the main loop, and may be empty.
struct OutboxListeners {
    /// A job was handed over, failed or became uncertain.
    std::function<void(const OutboxJob& job, const HandoverEnd& end)> ended;
    /// A job whose program was killed while it handed the job over, now uncertain or failed.
    std::function<void(const OutboxJob& job)> settled;
    /// All jobs that ask now whether they are still to go out; told whenever that was looked at.
    std::function<void(const std::vector<OutboxJob>& jobs)> overdue;
    /// The outbox cannot be used; the same reason is told once.
    std::function<void(const std::string& line)> trouble;
};

/// A worker of the outbox, on a thread of its own: it sends jobs when they are due. While another program
/// has the right to do so, it waits for its end, and only does what it is told to.
///
/// It looks into the outbox when it is woken, when the next job is due, and twice a minute: another program
/// may queue a job, and the clock may change. Made and destroyed on the thread of the main loop.
class OutboxSending {
public:
    /// `longestWait`: how late a job may be that another program queued, or when the clock changed.
    OutboxSending(OutboxSettings settings, OutboxListeners listeners,
                  std::chrono::seconds longestWait = std::chrono::seconds(30));
    /// Stops what is being handed over, and waits for that; nobody is told. A job of which nothing went out
    /// waits on.
    ~OutboxSending();
    OutboxSending(const OutboxSending&) = delete;
    OutboxSending& operator=(const OutboxSending&) = delete;

    [[nodiscard]] const OutboxSettings& settings() const { return settings_; }

    /// Has it look into the outbox now.
    void wake();

    /// Has it hand a job over that waits, due or not; `ended` is told of it, and `trouble` when that is
    /// impossible.
    void send(int number);

    /// Has it cancel a job; `trouble` is told when that is impossible.
    void cancel(int number);

    /// Whether a job is going out now, a part of which is at its destination.
    [[nodiscard]] bool isHalfOut() const { return halfOut_; }

private:
    using Task = std::function<void(Outbox& outbox, const Transfer& transfer)>;

    void run(const std::stop_token& stop);
    std::chrono::seconds lookOnce(const Transfer& transfer);
    void sendWaiting(Outbox& outbox, std::time_t now, const Transfer& transfer);
    void add(Task task);
    void carryOut(Outbox& outbox, const Transfer& transfer);
    void tellEnd(const OutboxJob& job, const HandoverEnd& end);
    void tellTrouble(const std::string& line);

    const OutboxSettings settings_;
    const OutboxListeners listeners_;
    const std::chrono::seconds longestWait_;
    MainLoopCalls calls_;
    std::atomic<bool> halfOut_ = false;

    std::mutex lock_; ///< of the two below
    std::vector<Task> tasks_;
    bool isWoken_ = false;
    std::condition_variable_any changed_;

    // Of the thread alone.
    std::unique_ptr<OutboxWorker> worker_;
    std::string toldTrouble_;

    std::jthread thread_; ///< the last member: it uses the others
};

/// The jobs that nothing sends once this desktop is closed.
struct JobsLeftBehind {
    std::size_t count = 0;
    std::time_t last = 0; ///< when the last of them is due
};

/// Looks for jobs that wait, and for a program that sends them besides this one; takes as long as the user's
/// systemd does. One that is being handed over waits on when that is stopped, unless it `isHalfOut`. None
/// when the outbox cannot be used.
[[nodiscard]] JobsLeftBehind jobsLeftBehind(const OutboxSettings& settings, bool isHalfOut = false);

} // namespace quelm

#endif
