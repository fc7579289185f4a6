// A queue of the CUPS print system.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_CUPS_DESTINATION_H
#define DRIVER_JOBS_CUPS_DESTINATION_H

#include "base/error.h"
#include "driver/jobs/output.h"
#include "driver/jobs/queue_limits.h"

#include <memory>
#include <string>

namespace quelm {

/// What a queue is told of a job. Texts are UTF-8.
struct QueueJob {
    std::string queue; ///< the queue's name, or a class's
    std::string title; ///< what lists of jobs show
    std::string user;  ///< whose job it is
};

/// Ends the delivery of a job that a queue was to hold and would not: its server ignores or changes the time,
/// or its clock differs by more than a minute. Nothing of the job is left in the queue.
class HoldRefused : public Error {
public:
    using Error::Error;
};

/// Puts the job into a queue as it is: no filter of the print system changes it, and no banner page joins
/// it. The receipt names the queue and the number of the job in it, and tells when the queue is paused.
///
/// A job that does not go out whole is cancelled in the queue; the error line says so, or what is left in
/// the queue when that fails. A server that asks for a password gets none.
std::unique_ptr<JobDestination> openQueue(const QueueJob& job, const QueueLimits& limits = {});

} // namespace quelm

#endif
