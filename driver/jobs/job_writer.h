// Writes a fax job: attribute lines, cover page and document as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_JOB_WRITER_H
#define DRIVER_JOBS_JOB_WRITER_H

#include "driver/cover/cover_page.h"
#include "driver/documents/document.h"
#include "driver/documents/document_copy.h"
#include "driver/documents/sink.h"
#include "driver/jobs/pdl_writers.h"
#include "driver/plugin/fax_session.h"

#include <ctime>
#include <functional>
#include <string>

namespace quelm {

/// What a job says of itself. Texts are UTF-8 and may hold anything.
struct JobFacts {
    std::string title;   ///< shown by the device; empty: the document's name
    std::string creator; ///< the program that writes the job
    std::tm now{};       ///< local time
    Progress progress;   ///< told about the document's bytes; may be empty
    /// Called once, ahead of all bytes, when the job holds the number of a credit card; may be empty.
    std::function<void()> beforeCreditCard;
};

/// Has the component write its cover page, and makes of it the page that goes out (`makeCoverPage`). Throws
/// quelm::Error when the component does not write it whole, the page or a value is refused, or a text of the
/// user holds a UEL. The job is not changed.
[[nodiscard]] CoverPage coverPageOf(FaxSession& session);

/// Writes the fax job of `session` with `document` into `sink`: page 1 is the cover page when one was
/// chosen, the document's pages follow. Ghostscript renders the stream as it stands.
///
/// - Pdl::dsc: a "%!PS-Adobe-3.0" header whose comments carry the attribute lines, the cover page, the
///   document.
/// - Pdl::pjl: UEL, "@PJL JOB", the attribute lines, "@PJL ENTER LANGUAGE=POSTSCRIPT", the same PostScript
///   without attribute lines, UEL, "@PJL EOJ", UEL.
///
/// The attribute lines that the component writes stand in the stream byte for byte, once they are seen to be
/// what devices know (`checkAttributeLines`); the cover page is that of `coverPageOf`. Throws quelm::Error
/// when the job has no recipients, the component writes no attribute lines, others than those of the job's
/// recipients, or not the whole cover page, the document or a text of the user holds a UEL, or `sink` fails;
/// the stream is of no use then.
void writeFaxJob(FaxSession& session, const Document& document, Pdl pdl, JobSink& sink,
                 const JobFacts& facts);

/// Writes the attribute lines alone, as the component writes them, text by text, and nothing else. Calls
/// `beforeCreditCard` ahead of them when they hold the number of a credit card. Throws quelm::Error, with
/// nothing written, when the job has no recipients or the component writes no attribute lines or others than
/// those of the job, and when `writer` fails.
void writeAttributes(FaxSession& session, Pdl pdl, GuardedPdlWriter& writer,
                     const std::function<void()>& beforeCreditCard = {});

/// Writes the pages of a document as a job carries them, without any fax. Throws quelm::Error as above.
void writeDocumentAlone(const Document& document, JobSink& sink, const JobFacts& facts);

/// Writes the cover page of `session`, as `writeFaxJob` writes it, as a PostScript file of its own: the
/// header of a job without its attribute lines, the page, the trailer. Without a title it is "Cover page". No
/// credit card is in it. Throws quelm::Error when the job has no recipients or no cover page was chosen, with
/// nothing written then, and, as `writeFaxJob` does, when the component does not write its page, what it
/// writes is refused, or `sink` fails.
void writeCoverPageAlone(FaxSession& session, JobSink& sink, const JobFacts& facts);

} // namespace quelm

#endif
