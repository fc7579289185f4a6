// Asks the print server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/queue_names.h"

#include "driver/jobs/print_queues.h"

#include <algorithm>

namespace quelm {

std::vector<std::string> queueNames(const std::function<bool()>& cancelled)
{
    Transfer transfer;
    transfer.cancelled = cancelled;
    auto queues = printQueues({}, transfer);
    std::stable_partition(queues.begin(), queues.end(),
                          [](const PrintQueue& queue) { return queue.isDefault; });
    std::vector<std::string> names;
    names.reserve(queues.size());
    for (const auto& queue : queues)
        names.push_back(queue.name);
    return names;
}

} // namespace quelm
