// Writes the job of a session, with its document, to where the user wants it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_WRITE_DOCUMENT_H
#define DRIVER_CLI_JOB_WRITE_DOCUMENT_H

#include "driver/documents/document.h"
#include "driver/jobs/job_writer.h"
#include "driver/outbox/submission.h"
#include "driver/plugin/fax_session.h"

#include <cstddef>
#include <ctime>
#include <functional>
#include <string>

namespace quelm {

/// Opens the document, and tells the user on standard error when something is amiss with it.
[[nodiscard]] Document openDocument(const std::string& path);

/// What a job that is written now says of itself, titled after its document.
[[nodiscard]] JobFacts factsOfNow();

/// True for a submission that is not handed over at once.
[[nodiscard]] bool waits(const Submission& submission);

/// Throws quelm::Error for a queue without a proper name, and for standard output where the job has to wait.
void requireUsableTarget(const Submission& submission);

/// Writes one print stream, and hands it over, holds it or puts it into the outbox, with progress on a
/// terminal; then calls `tell` with what became of it. Throws Error, and a file is what it was, when that
/// fails.
///
/// Ctrl-C while the job goes to a device or queue ends that in order: what went out is told in one line on
/// standard error, or by `tell`, before the signal ends the program.
void writeDocument(FaxSession& session, const Document& document, const Submission& submission,
                   const OutboxSettings& outbox, const std::function<void(const SubmissionEnd&)>& tell);

/// Does everything that `writeDocument` does up to the last byte, and drops it. Throws Error as it does for a
/// job that cannot be written; nothing is opened, sent or kept.
void tryDocument(FaxSession& session, const Document& document, Pdl pdl);

/// What became of a job, as one line for the user: where it is, or until when it waits and what sends it
/// then. `document` names the document.
[[nodiscard]] std::string endLine(const SubmissionEnd& end, const JobTarget& target,
                                  const std::string& document, std::size_t recipients, std::time_t now,
                                  const OutboxSettings& outbox);

} // namespace quelm

#endif
