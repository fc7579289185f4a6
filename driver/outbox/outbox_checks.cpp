// Refuses what a job's state does not allow.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_checks.h"

#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"

namespace quelm {

void requireReady(const OutboxJob& job)
{
    if (job.state != OutboxState::waiting && job.state != OutboxState::failed &&
        job.state != OutboxState::uncertain)
        throw JobUnavailable(
            localized("job %d of the outbox cannot be handed over: %s", job.number, stateClause(job.state)));
    requireKeptStream(job);
}

void requireKeptStream(const OutboxJob& job)
{
    if (!job.hasStream)
        throw JobUnavailable(localized(
            "job %d of the outbox cannot be handed over: its print stream is not kept", job.number));
}

void requireCancellable(const OutboxJob& job)
{
    if (job.state != OutboxState::waiting && job.state != OutboxState::failed &&
        job.state != OutboxState::uncertain && !(job.state == OutboxState::handedOver && job.isHeld))
        throw JobUnavailable(
            localized("job %d of the outbox cannot be cancelled: %s", job.number, stateClause(job.state)));
}

void requireRepeatable(const OutboxJob& job)
{
    if (job.state != OutboxState::handedOver && job.state != OutboxState::uncertain &&
        job.state != OutboxState::failed)
        throw JobUnavailable(
            localized("job %d of the outbox cannot be sent again: %s", job.number, stateClause(job.state)));
    if (!job.hasStream)
        throw JobUnavailable(
            localized("job %d of the outbox cannot be sent again: its print stream is not kept", job.number));
}

} // namespace quelm
