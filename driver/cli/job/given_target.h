// Where the options of a command say that a job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_GIVEN_TARGET_H
#define DRIVER_CLI_JOB_GIVEN_TARGET_H

#include "driver/cli/job/job_options.h"
#include "driver/jobs/job_target.h"

#include <optional>

namespace quelm {

/// The one place that --output, --device or --queue names; nothing when none is given. Throws UsageError when
/// several are.
[[nodiscard]] std::optional<JobTarget> givenTarget(const JobOptions& options);

} // namespace quelm

#endif
