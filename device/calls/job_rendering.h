// Renders a job in the device's state.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_JOB_RENDERING_H
#define DEVICE_CALLS_JOB_RENDERING_H

#include "base/disk_room.h"
#include "device/jobs/device_log.h"
#include "device/pages/page_file.h"

namespace quelm::device {

/// The density of a resolution: 204 dots in an inch, and 98, 196 or 391 lines.
[[nodiscard]] PageDensity densityOf(Resolution resolution);

/// Renders a job: a fax to its `pagesFile`, anything else to its `printedFile`. Returns how many pages it
/// has. A former attempt that was cut off is removed. Throws quelm::Error that says what is wrong with the
/// document, and NoRoom when there was no room on a disk for the pages.
[[nodiscard]] int renderJob(const JobRecord& job, const StateFolder& folder, const PageBounds& bounds);

} // namespace quelm::device

#endif
