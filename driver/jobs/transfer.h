// What a front end and a job on its way over a wire tell each other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_TRANSFER_H
#define DRIVER_JOBS_TRANSFER_H

#include "base/cancellation.h"
#include "driver/documents/document_copy.h"

#include <cstdint>

namespace quelm {

/// How the sender of a job takes part in its sending. Both functions may be empty.
struct Transfer {
    /// Told whenever the other side has taken more bytes of the job, on the thread that sends.
    Progress progress;
    /// Ends the sending.
    Cancellation cancelled;

    void report(std::uint64_t done, std::uint64_t total) const;
    bool isCancelled() const { return quelm::isCancelled(cancelled); }
};

} // namespace quelm

#endif
