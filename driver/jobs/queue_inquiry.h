// Finds a job in its queue again, and takes it out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_QUEUE_INQUIRY_H
#define DRIVER_JOBS_QUEUE_INQUIRY_H

#include "driver/jobs/job_target.h"
#include "driver/jobs/queue_limits.h"
#include "driver/jobs/transfer.h"

#include <string>

namespace quelm {

/// What a queue has of a job.
struct QueuedJob {
    enum class Content {
        absent,     ///< no such job
        incomplete, ///< a job without its document, or that was cancelled ahead of its printing
        complete,   ///< the job with its document: it waits, is held, is being printed, was printed
    };
    Content content = Content::absent;
    int number = 0;           ///< in the queue; 0 when it is absent
    bool isHeld = false;      ///< a complete job that is not to be printed yet
    bool isCancelled = false; ///< it was cancelled in the queue, or the server gave it up
};

/// Looks for the job that bears `token` in its name, as `JobLabel::token` put it there: the one of this
/// number, or with `number` 0 any job of the queue, whosever it is. A complete one counts before others. A
/// queue that there is not has no jobs.
///
/// A server may forget jobs that have ended, and may not tell `user` the names of jobs: that one is absent
/// does not mean that it was not printed.
///
/// Throws quelm::Error when the server cannot be asked, or is not done telling within `QueueLimits::answer`.
[[nodiscard]] QueuedJob findQueuedJob(const QueueTarget& target, const std::string& user,
                                      const std::string& token, int number, const QueueLimits& limits = {},
                                      const Transfer& transfer = {});

/// Cancels the job of this number in its queue, if it bears `token`; an empty one is not looked at. True when
/// it is cancelled, also by somebody before, or the queue has it no more. False when it was printed, the
/// server does not permit it, or cannot be asked. Waits no longer than `QueueLimits::cancel` for each answer.
[[nodiscard]] bool cancelQueuedJob(const QueueTarget& target, const std::string& user, int number,
                                   const QueueLimits& limits = {}, const std::string& token = {});

} // namespace quelm

#endif
