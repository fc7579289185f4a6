// Counts the destinations that were given.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/given_target.h"

#include "base/error.h"
#include "base/translation.h"

namespace quelm {

std::optional<JobTarget> givenTarget(const JobOptions& options)
{
    const int given = (options.output ? 1 : 0) + (options.device ? 1 : 0) + (options.queue ? 1 : 0);
    if (given > 1)
        throw UsageError(localized("a job goes to one place; give one of --output, --device and --queue"));
    if (options.device)
        return *options.device;
    if (options.queue)
        return QueueTarget{*options.queue};
    if (options.output)
        return FileTarget{*options.output};
    return std::nullopt;
}

} // namespace quelm
