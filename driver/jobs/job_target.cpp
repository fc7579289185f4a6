// Each kind of target has a kind of destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_target.h"

#include "driver/jobs/cups_destination.h"
#include "driver/jobs/tcp_destination.h"

namespace quelm {

std::unique_ptr<JobDestination> openDestination(const JobTarget& target, const JobLabel& label,
                                                const Document* document)
{
    if (const auto* device = std::get_if<NetworkAddress>(&target))
        return openDevice(*device);
    if (const auto* queue = std::get_if<QueueTarget>(&target))
        return openQueue({queue->name, label.title, label.user, label.token, label.holdUntil, label.created,
                          queue->server});
    const auto& path = std::get<FileTarget>(target).path;
    return document != nullptr ? openOutput(path, *document) : openOutput(path);
}

} // namespace quelm
