// What can be done with a job of the outbox, by its state.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_CHECKS_H
#define DRIVER_OUTBOX_OUTBOX_CHECKS_H

#include "driver/outbox/outbox_job.h"

namespace quelm {

// Each throws JobUnavailable (driver/outbox/outbox_failure.h) that names the job and says where it stands,
// and does nothing else: `Outbox` asks it before it acts, and whoever only wants to know what would happen.

/// Unless the job waits, failed or is uncertain: `Outbox::handOver`. Its print stream has to be
/// kept.
void requireReady(const OutboxJob& job);

/// Unless its print stream is kept.
void requireKeptStream(const OutboxJob& job);

/// Unless it waits, failed, is uncertain or is held by its queue: `Outbox::cancel`.
void requireCancellable(const OutboxJob& job);

/// Unless it was handed over, failed or is uncertain: `Outbox::sendAgain`. Its print stream has to be kept.
void requireRepeatable(const OutboxJob& job);

} // namespace quelm

#endif
