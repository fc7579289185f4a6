// Warnings about a job, as many as a person reads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_WARNINGS_H
#define DRIVER_HANDOVER_WARNINGS_H

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// The first `most` of the lines, and one that says how many were left out.
[[nodiscard]] std::vector<std::string> bounded(std::vector<std::string> lines, std::size_t most = 10);

/// Logs the lines as warnings, bounded.
void logWarnings(const std::vector<std::string>& lines);

} // namespace quelm

#endif
