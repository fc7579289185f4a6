// Makes jobs that have come durable, away from the thread that serves their senders.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/job_keeper.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <exception>
#include <string>
#include <utility>

namespace quelm::device {
namespace {

constexpr int threadCount = 4;

/// What is wrong with a refused job, as far as one line has room for it.
std::string refusal(const ReceivedJob& reading)
{
    const auto& first = reading.refusals.front();
    auto text = first.line == 0 ? first.text : "line " + std::to_string(first.line) + ": " + first.text;
    if (const auto count = reading.refusalCount(); count > 1)
        text += " (and " + std::to_string(count - 1) + " more)";
    return text;
}

// Programs read these lines: their words are English in every language, but for a reason at the end.

std::string receipt(const std::string& from, std::uint64_t size)
{
    return "received from " + from + ", " + std::to_string(size) + " bytes";
}

} // namespace

JobKeeper::JobKeeper(DeviceLog& log, JobKeeperSettings settings) : log_(log), settings_(std::move(settings))
{
    for (int i = 0; i < threadCount; ++i)
        threads_.emplace_back([this](const std::stop_token& stop) { work(stop); });
}

void JobKeeper::keep(std::uint64_t ticket, std::unique_ptr<IncomingJob> job, std::string from)
{
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back({ticket, std::move(job), std::move(from)});
    }
    changed_.notify_one();
}

void JobKeeper::work(const std::stop_token& stop)
{
    while (true) {
        std::unique_lock lock(mutex_);
        if (!changed_.wait(lock, stop, [this] { return !tasks_.empty(); }))
            return;
        auto task = std::move(tasks_.front());
        tasks_.pop_front();
        lock.unlock();
        settings_.decided(decide(std::move(task)));
    }
}

Verdict JobKeeper::decide(Task task)
{
    Verdict verdict;
    verdict.ticket = task.ticket;
    try {
        const auto reading = task.job->finish();
        if (!reading.isRefused())
            task.job->writeThrough(); // ahead of the log, which others wait for
        const std::lock_guard lock(entering_);
        if (!reading.isRefused() && log_.load().waitingJobs >= settings_.mostWaitingJobs)
            throw Error(localized("%d jobs are waiting, which is the most that this device keeps",
                                  settings_.mostWaitingJobs));
        verdict.job = log_.addJob(reading, task.job->file(), task.from, settings_.now());
        verdict.isKept = !reading.isRefused();
        verdict.line =
            "job " + std::to_string(verdict.job) + ": " +
            (verdict.isKept ? receipt(task.from, task.job->size()) : "refused: " + refusal(reading));
    } catch (const std::exception& error) {
        verdict.line = "job from " + task.from + ": not kept: " + oneLine(error.what());
    }
    return verdict;
}

} // namespace quelm::device
