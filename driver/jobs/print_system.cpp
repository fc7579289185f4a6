// Hands what is asked of the print system to the module that holds it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/print_system.h"

#include "base/module.h"
#include "driver/jobs/print_server.h"

namespace quelm {

std::string currentPrintServer() { return part<PrintSystem>().currentPrintServer(); }

std::vector<PrintQueue> printQueues(const QueueLimits& limits, const Transfer& transfer)
{
    return part<PrintSystem>().printQueues(limits, transfer);
}

std::unique_ptr<JobDestination> openQueue(const QueueJob& job, const QueueLimits& limits)
{
    return part<PrintSystem>().openQueue(job, limits);
}

QueuedJob findQueuedJob(const QueueTarget& target, const std::string& user, const std::string& token,
                        int number, const QueueLimits& limits, const Transfer& transfer)
{
    return part<PrintSystem>().findQueuedJob(target, user, token, number, limits, transfer);
}

bool cancelQueuedJob(const QueueTarget& target, const std::string& user, int number,
                     const QueueLimits& limits, const std::string& token)
{
    return part<PrintSystem>().cancelQueuedJob(target, user, number, limits, token);
}

} // namespace quelm
