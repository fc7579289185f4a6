// The device's memory: an SQLite database of jobs, recipients and calls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_DEVICE_LOG_H
#define DEVICE_JOBS_DEVICE_LOG_H

#include "device/jobs/job_records.h"
#include "device/jobs/state_folder.h"

#include <memory>
#include <string>
#include <vector>

namespace quelm::device {

/// A recipient whose turn it is.
struct DueCall {
    CallRecord call; ///< as it was entered, `calling`
    std::string keys;
    std::string mailbox;
    std::string card; ///< the job's credit card
    Speed speed = Speed::automatic;
    int pages = 0; ///< of the job
};

/// How full the device is.
struct DeviceLoad {
    int waitingJobs = 0; ///< received or calling
    int toRender = 0;    ///< received
    int runningCalls = 0;
    std::optional<Moment> nextAttempt; ///< the earliest of the recipients that wait
};

/// What was changed is durable when a function returns. Each may be called from any thread. Throws
/// quelm::Error when the database cannot be read or written; nothing was changed then.
class DeviceLog {
public:
    /// Opens or makes the database. Calls that were under way when the device was stopped or killed are
    /// broken off: what their receivers kept is removed, and the recipient is called again; such a call uses
    /// no attempt up. A call that is known to have ended keeps its file, which is moved to its place if it is
    /// not there yet. A job that was not in the database when the device was killed, so that its sender got
    /// no word for it, is removed; one whose files are gone is rendered again, or fails. What was
    /// acknowledged and is not in the database, because that is an older copy or was lost, is moved to
    /// unknown/ and told of in the log; numbers go on behind all that the files bear. Throws when the
    /// database is damaged, none of a device's, or a later version's.
    explicit DeviceLog(const StateFolder& folder);
    ~DeviceLog();
    DeviceLog(const DeviceLog&) = delete;
    DeviceLog& operator=(const DeviceLog&) = delete;

    /// Takes a job, whose bytes are in `spooled` (in incoming/), as the next number: the file is moved to its
    /// place. When this returns, the job survives. A refused one is remembered without its bytes, its card
    /// and its recipients, any of which may hold what somebody mistyped. Throws quelm::Error when it cannot
    /// be kept, or has a number that no telephone can dial; `spooled` is the caller's then.
    int addJob(const ReceivedJob& reading, const std::string& spooled, const std::string& from, Moment now);

    /// The oldest job that is to be rendered and has a number behind `after`.
    [[nodiscard]] std::optional<JobRecord> nextToRender(int after = 0);
    /// The pages are in `pagesFile`: from now on its recipients are called.
    void setRendered(int job, int pages, Moment now);
    /// The pages of a job that is no fax are in `printedFile`.
    void setPrinted(int job, int pages);
    /// It cannot be rendered: nobody is called.
    void setFailed(int job, const std::string& problem);

    /// Enters the call for the recipient whose turn it is at `now`, in the order of jobs and recipients;
    /// nothing when there is none. A number that is being called is not called a second time meanwhile.
    [[nodiscard]] std::optional<DueCall> beginCall(Moment now);

    /// Enters how the call ended and, in the same step, what becomes of its recipient (sent, called again at
    /// `again`, or failed) and of its job, which forgets its card with its last recipient. Then moves what
    /// the receiver kept from `incomingCall` to `receivedCall`; where that fails, the log tells of it, and
    /// the next call or start tries again. True when the job is done by it.
    bool endCall(const CallRecord& call, bool sent, std::optional<Moment> again);
    /// Enters that the device broke the call off: it is made again, and its number of attempt with it. What
    /// the receiver kept is removed.
    void breakOffCall(int call);

    /// Jobs that have become done, or failed, and ask for a sheet that is not there yet.
    [[nodiscard]] std::vector<int> missingReports();
    void setReported(int job);

    [[nodiscard]] DeviceLoad load();
    [[nodiscard]] std::optional<JobRecord> job(int number);
    /// The newest first, from `before` on (0 for the newest of all), at most `most`.
    [[nodiscard]] std::vector<JobRecord> jobs(int before, int most);
    [[nodiscard]] std::vector<CallRecord> calls(int before, int most);
    [[nodiscard]] std::vector<CallRecord> callsOf(int job);
    /// The latest moment that stands in it; the clock goes on from there.
    [[nodiscard]] std::optional<Moment> latestMoment();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
