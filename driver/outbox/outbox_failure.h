// Why the outbox cannot be used, in one line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_FAILURE_H
#define DRIVER_OUTBOX_OUTBOX_FAILURE_H

#include "base/error.h"
#include "driver/outbox/outbox_job.h"

#include <string>

namespace quelm {

/// Throws the quelm::Error that the outbox cannot be used because of the file or folder at `path`.
[[noreturn]] void failOutbox(const std::string& path, const std::string& reason);

/// Where a job stands, as the end of a sentence about what cannot be done with it: "it waits".
[[nodiscard]] std::string stateClause(OutboxState state);

/// Ends an operation on a job that is not in the state for it any more: another program, or the user, was
/// faster.
class JobUnavailable : public Error {
public:
    using Error::Error;
};

/// Ends a handing over to a queue that will not hold the job, when it cannot be noted that it waits.
class WaitingUnnoted : public Error {
public:
    using Error::Error;
};

/// Ends an operation on a job whose files are not what they were made as.
class JobDamaged : public Error {
public:
    using Error::Error;
};

} // namespace quelm

#endif
