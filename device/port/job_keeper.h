// Makes jobs that have come durable, away from the thread that serves their senders.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_JOB_KEEPER_H
#define DEVICE_PORT_JOB_KEEPER_H

#include "device/jobs/device_log.h"
#include "device/port/incoming_job.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace quelm::device {

/// What became of a job.
struct Verdict {
    std::uint64_t ticket = 0; ///< whose job it was
    int job = 0;              ///< its number; 0 when the device has no memory of it
    bool isKept = false;      ///< it survives; otherwise it was refused, or could not be kept
    std::string line;         ///< that, for people
};

struct JobKeeperSettings {
    int mostWaitingJobs = 1000;
    std::function<Moment()> now;
    /// Receives each verdict, on a thread of the keeper's.
    std::function<void(const Verdict&)> decided;
};

/// Writing a large job through takes its time, so that there are several threads for it: small jobs pass it.
class JobKeeper {
public:
    /// `log` outlives it.
    JobKeeper(DeviceLog& log, JobKeeperSettings settings);
    /// Keeps what was handed over, and gives the verdicts.
    ~JobKeeper() = default;
    JobKeeper(const JobKeeper&) = delete;
    JobKeeper& operator=(const JobKeeper&) = delete;

    /// Takes a job of which all bytes have come, from a sender's address. Does not wait.
    void keep(std::uint64_t ticket, std::unique_ptr<IncomingJob> job, std::string from);

private:
    struct Task {
        std::uint64_t ticket = 0;
        std::unique_ptr<IncomingJob> job;
        std::string from;
    };
    void work(const std::stop_token& stop);
    Verdict decide(Task task);

    DeviceLog& log_;
    JobKeeperSettings settings_;
    std::mutex entering_; ///< held while a job is counted and entered, so that there are never too many
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<Task> tasks_;
    std::vector<std::jthread> threads_; // last: they use what stands above
};

} // namespace quelm::device

#endif
