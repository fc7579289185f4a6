// What the user entered and no device gets to see.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_NOT_REACHING_H
#define DRIVER_HANDOVER_NOT_REACHING_H

#include "driver/handover/job_view.h"
#include "driver/plugin/fax_session.h"

#include <string>
#include <vector>

namespace quelm {

/// A sentence for each thing that was entered and does not reach the device, or not as it was entered: notes,
/// names and the like without a cover sheet that shows them, what the component shows elsewhere or although
/// it is not to, a paper size that it does not know, a prefix or card whose box is not ticked.
[[nodiscard]] std::vector<std::string> notReaching(const JobView& view,
                                                   const std::vector<JobRecipient>& recipients);

} // namespace quelm

#endif
