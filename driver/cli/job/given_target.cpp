// Counts the destinations that were given.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/given_target.h"

#include "base/error.h"
#include "base/translation.h"

namespace quelm {

const NamedTarget& destinationNamed(const std::string& name, const std::vector<NamedTarget>& destinations)
{
    std::string possible;
    for (const auto& destination : destinations) {
        if (destination.name == name)
            return destination;
        possible += (possible.empty() ? "" : ", ") + destination.name;
    }
    if (possible.empty())
        throw UsageError(localized("--destination: there is no destination \"%s\"; none is configured, see "
                                   "quelm-driver config show",
                                   name));
    throw UsageError(
        localized("--destination: there is no destination \"%s\"; possible are %s", name, possible));
}

std::optional<JobTarget> givenTarget(const JobOptions& options, const std::vector<NamedTarget>& destinations)
{
    const int given = (options.output ? 1 : 0) + (options.device ? 1 : 0) + (options.queue ? 1 : 0) +
                      (options.destination ? 1 : 0);
    if (given > 1)
        throw UsageError(
            localized("a job goes to one place; give one of --output, --device, --queue and --destination"));
    if (options.destination)
        return destinationNamed(*options.destination, destinations).target;
    if (options.device)
        return *options.device;
    if (options.queue)
        return QueueTarget{*options.queue};
    if (options.output)
        return FileTarget{*options.output};
    return std::nullopt;
}

} // namespace quelm
