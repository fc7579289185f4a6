// The words and rules of a job in the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_job.h"

namespace quelm {

const char* wordOf(OutboxState state)
{
    switch (state) {
    case OutboxState::waiting:
        return "waiting";
    case OutboxState::handingOver:
        return "handing over";
    case OutboxState::handedOver:
        return "handed over";
    case OutboxState::uncertain:
        return "uncertain";
    case OutboxState::failed:
        return "failed";
    case OutboxState::cancelled:
        break;
    }
    return "cancelled";
}

bool OutboxJob::isOverdue(std::time_t now) const
{
    constexpr std::time_t hour = 3600;
    return state == OutboxState::waiting && now - due > hour;
}

bool OutboxJob::waitsInQueue(std::time_t now) const
{
    return state == OutboxState::handedOver && isHeld && due > now;
}

} // namespace quelm
