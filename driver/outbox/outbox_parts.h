// What the outbox is made of, for the sources that implement it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_PARTS_H
#define DRIVER_OUTBOX_OUTBOX_PARTS_H

#include "base/file_handle.h"
#include "driver/outbox/outbox_folder.h"
#include "driver/outbox/outbox_log.h"
#include "driver/outbox/outbox_settings.h"

#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace quelm {

/// A job that this process put in and hands over first.
struct OwnJob {
    FileHandle lock;
    bool waits = false; ///< when that does not come to an end
};

/// The folder and the log of one outbox, and what is done with both. Operations throw quelm::Error.
class OutboxParts {
public:
    explicit OutboxParts(const OutboxSettings& wanted) : settings(wanted), folder(wanted.folder), log(folder)
    {
    }

    OutboxSettings settings;
    OutboxFolder folder;
    OutboxLog log;
    /// The jobs that were put in to be handed over by this process, and were not yet.
    std::map<int, OwnJob> own;

    /// The row of a job, changed within a transaction; the row as it is then.
    LogRow change(int number, const std::function<void(LogRow&)>& action);

    /// Locks a job for this process. Throws JobUnavailable when another one has it, and JobDamaged when its
    /// folder is not there or is none.
    [[nodiscard]] FileHandle lock(int number);

    /// Gives a job, which this process has locked, its end: what is not kept any more goes.
    void end(int number, const std::function<void(LogRow&)>& action);

    /// Removes a job of which nothing went out, as far as that can be done now; the rest later.
    void forget(int number) noexcept;

    /// Removes the files that the log says may be there and should not.
    void tidy(const LogRow& row);

    /// Removes what killed programs left, and what is not kept at all. Does not look at the clock.
    void sweep();

    /// Removes what is too old, once a day, as far as that can be done now. A clock that was put forward by
    /// mistake, or stands still, must not erase what is kept: it is old what was so already when the clock
    /// was looked at a day or more ago.
    void sweepOld();

    [[nodiscard]] OutboxJob jobOf(const LogRow& row) const;

private:
    void sweepStrays(const std::vector<LogRow>& rows);
    void sweepJobs(const std::vector<LogRow>& rows, std::optional<std::time_t> moment);
    void sweepJob(const LogRow& row, std::optional<std::time_t> moment);
    /// At `moment`; without one only what is not kept at all.
    [[nodiscard]] bool isExpired(const LogRow& row, std::optional<std::time_t> moment) const;
};

/// A text of random digits, by which a job is found again.
[[nodiscard]] std::string newToken();

} // namespace quelm

#endif
