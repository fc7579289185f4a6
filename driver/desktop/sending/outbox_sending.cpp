// The thread that looks after the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/outbox_sending.h"

#include "base/clock.h"
#include "base/error.h"
#include "driver/outbox/outbox_sender.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace quelm {

OutboxSending::OutboxSending(OutboxSettings settings, OutboxListeners listeners,
                             std::chrono::seconds longestWait)
    : settings_(std::move(settings)), listeners_(std::move(listeners)), longestWait_(longestWait),
      thread_([this](const std::stop_token& stop) { run(stop); })
{
}

OutboxSending::~OutboxSending()
{
    thread_.request_stop();
    thread_.join();
}

void OutboxSending::wake()
{
    {
        const std::lock_guard guard(lock_);
        isWoken_ = true;
    }
    changed_.notify_one();
}

void OutboxSending::add(Task task)
{
    {
        const std::lock_guard guard(lock_);
        tasks_.push_back(std::move(task));
    }
    wake();
}

void OutboxSending::send(int number)
{
    add([this, number](Outbox& outbox, const Transfer& transfer) {
        tellEnd(outbox.job(number), outbox.handOver(number, currentTime(), transfer));
    });
}

void OutboxSending::cancel(int number)
{
    add([number](Outbox& outbox, const Transfer&) { outbox.cancel(number, currentTime()); });
}

// --- On the thread -----------------------------------------------------------------------------------

void OutboxSending::run(const std::stop_token& stop)
{
    Transfer transfer;
    transfer.cancelled = [&stop] { return stop.stop_requested(); };
    transfer.progress = [this](std::uint64_t done, std::uint64_t) { halfOut_ = done > 0; };
    while (!stop.stop_requested()) {
        const auto wait = lookOnce(transfer);
        std::unique_lock guard(lock_);
        changed_.wait_for(guard, stop, wait, [this] { return isWoken_; });
        isWoken_ = false;
    }
    worker_.reset();
}

/// Returns how long to wait before the next time. The outbox is opened each time: it is swept then, and
/// somebody may have removed it.
std::chrono::seconds OutboxSending::lookOnce(const Transfer& transfer)
{
    auto wait = longestWait_;
    try {
        Outbox outbox(settings_);
        carryOut(outbox, transfer);
        if (!worker_)
            worker_ = OutboxWorker::start(settings_, WorkerKind::desktop);
        if (worker_)
            sendWaiting(outbox, currentTime(), transfer);
        const std::time_t now = currentTime();
        if (const auto next = outbox.nextDue(now); worker_ && next)
            wait = std::clamp(std::chrono::seconds(*next - now), std::chrono::seconds(1), longestWait_);
        toldTrouble_.clear();
    } catch (const std::exception& error) {
        if (toldTrouble_ != error.what())
            tellTrouble(error.what());
        toldTrouble_ = error.what();
    }
    halfOut_ = false;
    return wait;
}

void OutboxSending::sendWaiting(Outbox& outbox, std::time_t now, const Transfer& transfer)
{
    for (const auto& job : outbox.settleOrphans(now, transfer))
        if (job.state == OutboxState::uncertain || job.state == OutboxState::failed)
            calls_.add([this, job] {
                if (listeners_.settled)
                    listeners_.settled(job);
            });
    worker_->sendDue(outbox, now, transfer,
                     [this](const OutboxJob& job, const HandoverEnd& end) { tellEnd(job, end); });
    std::vector<OutboxJob> overdue;
    std::ranges::copy_if(outbox.jobs(OutboxState::waiting), std::back_inserter(overdue),
                         [now](const OutboxJob& job) { return job.isOverdue(now); });
    calls_.add([this, overdue] {
        if (listeners_.overdue)
            listeners_.overdue(overdue);
    });
}

/// Each task's failure is told; it may be the same again.
void OutboxSending::carryOut(Outbox& outbox, const Transfer& transfer)
{
    std::vector<Task> tasks;
    {
        const std::lock_guard guard(lock_);
        tasks.swap(tasks_);
    }
    for (const auto& task : tasks) {
        try {
            task(outbox, transfer);
        } catch (const std::exception& error) {
            tellTrouble(error.what());
        }
    }
}

void OutboxSending::tellEnd(const OutboxJob& job, const HandoverEnd& end)
{
    halfOut_ = false;
    if (end.cancelled)
        return;
    calls_.add([this, job, end] {
        if (listeners_.ended)
            listeners_.ended(job, end);
    });
}

void OutboxSending::tellTrouble(const std::string& line)
{
    calls_.add([this, line] {
        if (listeners_.trouble)
            listeners_.trouble(line);
    });
}

// --- At the end --------------------------------------------------------------------------------------

JobsLeftBehind jobsLeftBehind(const OutboxSettings& settings, bool isHalfOut)
{
    JobsLeftBehind left;
    try {
        Outbox outbox(settings);
        const std::time_t now = currentTime();
        for (const auto state : {OutboxState::waiting, OutboxState::handingOver})
            for (const auto& job : outbox.jobs(state))
                if ((job.state == OutboxState::waiting || (job.isUnattended && !isHalfOut)) &&
                    !job.isOverdue(now)) {
                    ++left.count;
                    left.last = std::max(left.last, job.due);
                }
        if (left.count == 0)
            return {};
        const auto living = OutboxWorker::living(settings);
        const bool isOther = living && living->process != ::getpid();
        if (isOther || timerSender() != OutboxSender::nobody)
            return {};
    } catch (const Error&) {
        return {};
    }
    return left;
}

} // namespace quelm
