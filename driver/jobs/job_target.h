// The places that a job can go to, and the way from the name of one to its destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_TARGET_H
#define DRIVER_JOBS_JOB_TARGET_H

#include "base/net/network_address.h"
#include "driver/documents/document.h"
#include "driver/jobs/output.h"
#include "driver/plugin/fax_session.h"

#include <ctime>
#include <functional>
#include <memory>
#include <optional>
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
    /// Where its print server is: "HOST:PORT", or the path of a socket; empty: the user's server of now.
    std::string server = {};
};

/// Where a job is to go. An address is that of a device.
using JobTarget = std::variant<FileTarget, NetworkAddress, QueueTarget>;

/// A place under the name by which users choose it, which is UTF-8.
struct NamedTarget {
    std::string name;
    JobTarget target;
    std::optional<Pdl> pdl; ///< the form of jobs that it takes; nothing: any
};

/// What a destination is told of a job beside its bytes. Texts are UTF-8.
struct JobLabel {
    std::string title; ///< a queue lists the job under it
    std::string user;  ///< whose job it is
    /// Stands in the job's name in a queue, by which it is found again; empty for none.
    std::string token = {};
    /// A queue keeps the job until then, or does not take it (`HoldRefused`).
    std::optional<std::time_t> holdUntil = {};
    /// Called with the number that a queue gave the job, before anything of its content is sent; may be
    /// empty.
    std::function<void(int job)> created = {};
};

/// The destination for one job. A file must not be that of `document`, which may be null. Throws quelm::Error
/// for a file that cannot be written to; whether a device or queue takes the job is known on delivery.
[[nodiscard]] std::unique_ptr<JobDestination> openDestination(const JobTarget& target, const JobLabel& label,
                                                              const Document* document);

} // namespace quelm

#endif
