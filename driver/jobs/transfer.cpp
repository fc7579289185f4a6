// What a front end and a job on its way over a wire tell each other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/transfer.h"

namespace quelm {

void Transfer::report(std::uint64_t done, std::uint64_t total) const
{
    if (progress)
        progress(done, total);
}

} // namespace quelm
