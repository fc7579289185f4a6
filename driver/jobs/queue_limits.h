// How long a print server is waited for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_QUEUE_LIMITS_H
#define DRIVER_JOBS_QUEUE_LIMITS_H

#include <chrono>

namespace quelm {

struct QueueLimits {
    std::chrono::milliseconds connect = std::chrono::seconds(5); ///< for a connection, name look-up included
    std::chrono::milliseconds answer =
        std::chrono::seconds(30);                               ///< for an answer, and while it takes no byte
    std::chrono::milliseconds cancel = std::chrono::seconds(5); ///< for the end of a job that was cut off
};

} // namespace quelm

#endif
