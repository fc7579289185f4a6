// Writes the job of a session, with its document, to where the user wants it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_WRITE_DOCUMENT_H
#define DRIVER_CLI_JOB_WRITE_DOCUMENT_H

#include "driver/documents/document.h"
#include "driver/jobs/job_target.h"
#include "driver/jobs/job_writer.h"
#include "driver/plugin/fax_session.h"

#include <functional>
#include <string>

namespace quelm {

/// Opens the document, and tells the user on standard error when something is amiss with it.
[[nodiscard]] Document openDocument(const std::string& path);

/// What a job that is written now says of itself, titled after its document.
[[nodiscard]] JobFacts factsOfNow();

/// Writes one print stream and hands it to `target` as `user`'s, with progress on a terminal; then calls
/// `tell` with what became of it. Throws Error, and a file is what it was, when that fails.
///
/// Ctrl-C while the job goes to a device or queue ends that in order: what went out is told in one line on
/// standard error, or by `tell`, before the signal ends the program.
void writeDocument(FaxSession& session, Pdl pdl, const Document& document, const JobTarget& target,
                   const std::string& user, const std::function<void(const Receipt&)>& tell);

} // namespace quelm

#endif
