// What a device log is made of, and puts right behind a device that was stopped or killed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_LOG_STATE_H
#define DEVICE_JOBS_LOG_STATE_H

#include "device/jobs/device_database.h"
#include "device/jobs/job_records.h"
#include "device/jobs/kept_numbers.h"

#include <filesystem>
#include <mutex>
#include <vector>

namespace quelm::device {

struct LogState {
    explicit LogState(const StateFolder& stateFolder) : folder(stateFolder), database(stateFolder) {}

    /// Puts right what a device left that was stopped or killed.
    void recover();
    /// Moves what receivers kept to its place, removes what belongs to no call that has ended, and the files
    /// of jobs whose card is forgotten. What cannot be done is told of in the log, and stays to be done.
    void tidy() noexcept;
    /// Within a transaction: the number of the next job, or call. None is given twice, whatever became of the
    /// database.
    int nextJob();
    int nextCall();
    /// A job is in the database: its sender is about to get word for it.
    void unmark(int job) noexcept;
    /// Within a transaction: the recipients of such a call wait again, and its attempt is given back.
    void breakOff(const CallRecord& call);
    /// Within a transaction: a job without recipients that are still to be called is done; true when it is so
    /// from now on.
    bool finishIfDone(int job);
    /// Within a transaction: a job that ended forgets its card, and its file if that holds one.
    void forgetCard(int job);

    const StateFolder& folder;
    KeptNumbers kept; ///< when the device began
    std::mutex mutex;
    DeviceDatabase database;
    bool isTidy = false;
    bool toldOfTrouble = false;

private:
    void recoverJobs();
    void tellOfLoss();
    std::vector<int> unknownJobs();
    void setJobsAside(const std::vector<int>& jobs);
    void settleIncoming(const std::filesystem::path& file);
    void dropJobFiles();
};

} // namespace quelm::device

#endif
