// What of a component's cover page the driver lets into a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_COVER_PAGE_CHECK_H
#define DRIVER_JOBS_COVER_PAGE_CHECK_H

#include "driver/plugin/fax_session.h"

#include <string_view>

namespace quelm {

/// Throws quelm::Error unless `page` is the component's header, filled with values that each stay in their
/// place, and its trailer byte for byte: ten strings, the note's strings, and five numbers, none with a line
/// end or another control character. The component puts the user's texts into the page as they stand; one
/// with a line end could end the job, or tell the device to dial somebody. The error names the first line
/// that differs.
///
/// Of a component without such a header, lines that a device would take for commands are refused.
void checkCoverPage(std::string_view page, const CoverPageTemplate& expected);

} // namespace quelm

#endif
