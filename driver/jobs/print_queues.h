// The queues that a user may choose from.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_PRINT_QUEUES_H
#define DRIVER_JOBS_PRINT_QUEUES_H

#include "driver/jobs/queue_limits.h"
#include "driver/jobs/transfer.h"

#include <string>
#include <vector>

namespace quelm {

/// One queue or class of the print server.
struct PrintQueue {
    std::string name;
    std::string description; ///< for people; the name again when nobody wrote one
    bool isDefault = false;  ///< the user's default, or else the server's
    bool isAccepting = true; ///< takes jobs at present
    bool isPaused = false;   ///< keeps jobs until it is resumed
};

/// All queues of the user's print server, in its order (CUPS sorts them by name); none when it has none.
/// Takes no longer than `limits` allow. Throws quelm::Error when the server cannot be reached or does not
/// tell.
std::vector<PrintQueue> printQueues(const QueueLimits& limits = {}, const Transfer& transfer = {});

} // namespace quelm

#endif
