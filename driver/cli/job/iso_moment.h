// Points in time for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_ISO_MOMENT_H
#define DRIVER_CLI_JOB_ISO_MOMENT_H

#include <ctime>
#include <string>

namespace quelm {

/// The moment in local time as ISO 8601 writes it, with the zone's distance from UTC:
/// "2026-11-23T04:05:00+05:30".
[[nodiscard]] std::string isoMoment(std::time_t moment);

} // namespace quelm

#endif
