// A queue of the CUPS print system.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_CUPS_DESTINATION_H
#define DRIVER_JOBS_CUPS_DESTINATION_H

#include "base/error.h"
#include "driver/jobs/output.h"
#include "driver/jobs/queue_limits.h"

#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quelm {

/// What a queue is told of a job. Texts are UTF-8.
struct QueueJob {
    std::string queue; ///< the queue's name, or a class's
    std::string title; ///< what lists of jobs show
    std::string user;  ///< whose job it is
    // As of `JobLabel` and `QueueTarget`.
    std::string token = {};
    std::optional<std::time_t> holdUntil = {};
    std::function<void(int job)> created = {};
    std::string server = {};
};

/// Ends the delivery of a job that a queue was to hold and would not, or cannot be trusted to: its server
/// cannot be asked, ignores or changes the time, or lets the job go, or its clock differs by more than a
/// minute or is not known, or the time is too near or more than a day ahead. Nothing of the job's content is
/// in the queue. A queue that there is not, or that takes no jobs, ends with another error.
class HoldRefused : public Error {
public:
    using Error::Error;
};

/// Puts the job into a queue as it is: no filter of the print system changes it, and no banner page joins
/// it. The receipt names the queue and the number of the job in it, and tells when the queue is paused or, by
/// its own settings, holds the job.
///
/// A job that does not go out whole is cancelled in the queue; the error line says so. When that fails, or
/// the queue had begun to print it, the error is a `DeliveryInDoubt`, and says what is left to do. A server
/// that asks for a password gets none.
///
/// When `QueueJob::created` throws, the job is cancelled in the queue, and ends with the same exception.
///
/// A job that is to be held is handed over only when the server is seen to hold it: before anything of its
/// content is sent, and again behind its last byte.
std::unique_ptr<JobDestination> openQueue(const QueueJob& job, const QueueLimits& limits = {});

} // namespace quelm

#endif
