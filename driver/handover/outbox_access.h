// Opens the outbox for a job that may need it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_OUTBOX_ACCESS_H
#define DRIVER_HANDOVER_OUTBOX_ACCESS_H

#include "driver/jobs/job_target.h"
#include "driver/outbox/outbox.h"

#include <memory>

namespace quelm {

/// The outbox of this account. Throws quelm::Error when it cannot be used, or no folder for it is known.
[[nodiscard]] std::unique_ptr<Outbox> openOutbox(const OutboxSettings& settings);

/// The outbox for a job on its way to `target`; null when it goes out at once without one: to a file or
/// standard output, when nothing is kept, and, with a warning in the log, when the outbox cannot be used.
/// Throws quelm::Error when the job has to wait (`waits`) and the outbox cannot be used.
[[nodiscard]] std::unique_ptr<Outbox> outboxFor(const JobTarget& target, bool waits,
                                                const OutboxSettings& settings);

} // namespace quelm

#endif
