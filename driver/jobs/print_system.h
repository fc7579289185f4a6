// The print system as a part that is loaded when the first queue is used.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_PRINT_SYSTEM_H
#define DRIVER_JOBS_PRINT_SYSTEM_H

#include "driver/jobs/cups_destination.h"
#include "driver/jobs/print_queues.h"
#include "driver/jobs/queue_inquiry.h"

#include <memory>
#include <string>
#include <vector>

namespace quelm {

/// Implemented by the module "queue", which brings libcups. Each function does what the one of its name does
/// that callers use.
class PrintSystem {
public:
    static constexpr const char* moduleName = "queue";

    PrintSystem() = default;
    virtual ~PrintSystem() = default;
    PrintSystem(const PrintSystem&) = delete;
    PrintSystem& operator=(const PrintSystem&) = delete;

    [[nodiscard]] virtual std::string currentPrintServer() const = 0;
    [[nodiscard]] virtual std::vector<PrintQueue> printQueues(const QueueLimits& limits,
                                                              const Transfer& transfer) const = 0;
    [[nodiscard]] virtual std::unique_ptr<JobDestination> openQueue(const QueueJob& job,
                                                                    const QueueLimits& limits) const = 0;
    [[nodiscard]] virtual QueuedJob findQueuedJob(const QueueTarget& target, const std::string& user,
                                                  const std::string& token, int number,
                                                  const QueueLimits& limits,
                                                  const Transfer& transfer) const = 0;
    [[nodiscard]] virtual bool cancelQueuedJob(const QueueTarget& target, const std::string& user, int number,
                                               const QueueLimits& limits, const std::string& token) const = 0;
};

} // namespace quelm

#endif
