// Which numbers of jobs and calls the files of a device's state bear.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_KEPT_NUMBERS_H
#define DEVICE_JOBS_KEPT_NUMBERS_H

#include "device/jobs/state_folder.h"

#include <vector>

namespace quelm::device {

/// The highest numbers; 0 for none. The database may be an older copy, or lost: what lies beside it tells
/// which numbers were given.
struct KeptNumbers {
    int job = 0;  ///< of jobs/, printed/, reports/ and unknown/
    int call = 0; ///< of received/, incoming/ and unknown/
};

/// Throws quelm::Error when a folder cannot be listed.
[[nodiscard]] KeptNumbers keptNumbers(const StateFolder& folder);

/// The jobs that have a folder in jobs/, in their order. Throws as above.
[[nodiscard]] std::vector<int> keptJobs(const StateFolder& folder);

} // namespace quelm::device

#endif
