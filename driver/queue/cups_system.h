// The print system as libcups has it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_QUEUE_CUPS_SYSTEM_H
#define DRIVER_QUEUE_CUPS_SYSTEM_H

#include "driver/jobs/print_system.h"

#include <memory>
#include <string>
#include <vector>

namespace quelm {

class CupsServer;

class CupsSystem final : public PrintSystem {
public:
    [[nodiscard]] std::string currentPrintServer() const override;
    [[nodiscard]] std::vector<PrintQueue> printQueues(const QueueLimits& limits,
                                                      const Transfer& transfer) const override;
    [[nodiscard]] std::unique_ptr<JobDestination> openQueue(const QueueJob& job,
                                                            const QueueLimits& limits) const override;
    [[nodiscard]] QueuedJob findQueuedJob(const QueueTarget& target, const std::string& user,
                                          const std::string& token, int number, const QueueLimits& limits,
                                          const Transfer& transfer) const override;
    [[nodiscard]] bool cancelQueuedJob(const QueueTarget& target, const std::string& user, int number,
                                       const QueueLimits& limits, const std::string& token) const override;
};

/// The queues of a server over a connection that stands.
[[nodiscard]] std::vector<PrintQueue> queuesOf(CupsServer& server);

} // namespace quelm

#endif
