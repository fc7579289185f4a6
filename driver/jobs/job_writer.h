// Writes a fax job: attribute lines, cover page and document as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_WRITER_H
#define DRIVER_JOBS_JOB_WRITER_H

#include "driver/documents/document.h"
#include "driver/documents/document_copy.h"
#include "driver/documents/sink.h"
#include "driver/jobs/pdl_writers.h"
#include "driver/plugin/fax_session.h"

#include <ctime>
#include <string>

namespace quelm {

/// What a job says of itself. Texts are UTF-8 and may hold anything.
struct JobFacts {
    std::string title;   ///< shown by the device; empty: the document's name
    std::string creator; ///< the program that writes the job
    std::tm now{};       ///< local time
    Progress progress;   ///< told about the document's bytes; may be empty
};

/// Writes the fax job of `session` with `document` into `sink`: page 1 is the cover page when one was
/// chosen, the document's pages follow. Ghostscript renders the stream as it stands.
///
/// - Pdl::dsc: a "%!PS-Adobe-3.0" header whose comments carry the attribute lines, the cover page, the
///   document.
/// - Pdl::pjl: UEL, "@PJL JOB", the attribute lines, "@PJL ENTER LANGUAGE=POSTSCRIPT", the same PostScript
///   without attribute lines, UEL, "@PJL EOJ", UEL.
///
/// What the component writes stands in the stream byte for byte. Throws quelm::Error when the job has no
/// recipients, the component writes no attribute lines or not the whole cover page, the document or a text
/// of the user holds a UEL, or `sink` fails; the stream is of no use then.
void writeFaxJob(FaxSession& session, const Document& document, Pdl pdl, JobSink& sink,
                 const JobFacts& facts);

/// Writes the attribute lines alone, as the component writes them, and nothing else. Throws
/// quelm::Error when the job has no recipients, the component writes no attribute lines or `writer` fails.
void writeAttributes(FaxSession& session, Pdl pdl, GuardedPdlWriter& writer);

} // namespace quelm

#endif
