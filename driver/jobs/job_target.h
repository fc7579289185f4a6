// The places that a job can go to, and the way from the name of one to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_TARGET_H
#define DRIVER_JOBS_JOB_TARGET_H

#include "base/net/network_address.h"
#include "driver/documents/document.h"
#include "driver/jobs/output.h"

#include <memory>
#include <string>
#include <variant>

namespace quelm {

/// A file or fifo; "-" is standard output.
struct FileTarget {
    std::string path;
};

/// A queue of the print system.
struct QueueTarget {
    std::string name;
};

/// Where a job is to go. An address is that of a device.
using JobTarget = std::variant<FileTarget, NetworkAddress, QueueTarget>;

/// The destination for one job with `document`, which is `user`'s; a queue lists it under the document's
/// name. Throws quelm::Error for a file that cannot be written to; whether a device or queue takes the job is
/// known on delivery.
[[nodiscard]] std::unique_ptr<JobDestination>
openDestination(const JobTarget& target, const Document& document, const std::string& user);

} // namespace quelm

#endif
