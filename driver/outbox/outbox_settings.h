// Where an outbox is, and how long it keeps its jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_SETTINGS_H
#define DRIVER_OUTBOX_OUTBOX_SETTINGS_H

#include <ctime>
#include <string>

namespace quelm {

/// What is no further ahead, in seconds, is not worth a queue's holding it.
inline constexpr std::time_t leastHold = 5 * 60;

struct OutboxSettings {
    std::string folder; ///< absolute; made when it is missing, for this user alone
    /// How many days a job stays after its end, so that it can be sent again. 0: what was handed over or
    /// cancelled goes at once.
    int keepDays = 30;
};

} // namespace quelm

#endif
