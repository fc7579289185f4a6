// Draws a job's cover page into a picture, so that it can be looked at before anything is sent.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_COVER_PICTURE_H
#define DRIVER_CLI_JOB_COVER_PICTURE_H

#include "driver/plugin/fax_session.h"

#include <string>

namespace quelm {

/// Draws the cover page of the session's job, as it would go out now, and writes it to `path`: a PNG with
/// 8-bit gray pixels, 150 to the inch, 1275 wide and 1650 high. The file appears whole or not at all; "-" is
/// standard output. Throws Error, and a file is what it was, when the job has no cover page or no recipients,
/// its page cannot be written, Ghostscript cannot draw it, or the picture cannot be written.
void writeCoverPicture(FaxSession& session, const std::string& path);

/// Whether both paths lead to one file, so that what is written to the one would be lost or mixed with what
/// is written to the other. "-" is standard output. Neither needs to exist.
[[nodiscard]] bool leadToOneFile(const std::string& one, const std::string& other);

} // namespace quelm

#endif
