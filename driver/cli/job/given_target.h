// Where the options of a command say that a job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_GIVEN_TARGET_H
#define DRIVER_CLI_JOB_GIVEN_TARGET_H

#include "driver/cli/job/job_options.h"
#include "driver/jobs/job_target.h"

#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// The destination of that name. Throws UsageError, with the names that there are, when there is none.
[[nodiscard]] const NamedTarget& destinationNamed(const std::string& name,
                                                  const std::vector<NamedTarget>& destinations);

/// The one place that --output, --device or --queue names, or --destination among `destinations`; nothing
/// when none is given. Throws UsageError when several are, and for a destination that there is not.
[[nodiscard]] std::optional<JobTarget> givenTarget(const JobOptions& options,
                                                   const std::vector<NamedTarget>& destinations);

} // namespace quelm

#endif
