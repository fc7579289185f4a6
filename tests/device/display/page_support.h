// Pages and records that the tests of the device's sheets and status pages begin with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_DISPLAY_PAGE_SUPPORT_H
#define TESTS_DEVICE_DISPLAY_PAGE_SUPPORT_H

#include "device/jobs/job_records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quelm::tests {

/// A page whose upper part is black, as far as `blackLines` says.
struct DrawnPage {
    std::uint32_t across = 1728;
    std::uint32_t down = 1078; ///< 11 inches at 98 dots
    std::uint32_t blackLines = 0;
    float dotsDown = 98; ///< of an inch
};

/// Writes a TIFF file as the device's modems do: T.6, 204 dots across an inch. Returns its path.
std::string writePages(const std::string& path, const std::vector<DrawnPage>& pages);

/// Milliseconds since 1970 in UTC as the device counts them.
device::Moment momentAt(long long seconds);

/// The job 12 of three pages, "Sample letter", for three recipients: one sent at the second call, one to a
/// mailbox, one that failed.
device::JobRecord sampleJob();
/// Its calls, the oldest first.
std::vector<device::CallRecord> sampleCalls();

} // namespace quelm::tests

#endif
