// Copies a document into a job so that nothing in it is taken for a line of the job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_DOCUMENT_COPY_H
#define DRIVER_DOCUMENTS_DOCUMENT_COPY_H

#include "driver/documents/document_bytes.h"
#include "driver/documents/sink.h"

#include <cstdint>
#include <functional>

namespace quelm {

/// Told from time to time how many bytes of how many are done.
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// How a copied document ended.
struct DocumentEnd {
    bool insideLine = false;    ///< its last line has no line end
    unsigned openDocuments = 0; ///< how many "%%BeginDocument" in it were not ended
};

/// Copies the document's PostScript into `sink`, in constant memory.
///
/// A device looks for attributes at the starts of lines, perhaps behind blanks (blank, tab, form feed,
/// vertical tab, NUL). So lines (ended by "\r", "\n" or both) that begin like an attribute ("%%OID_ATT_",
/// "%%QLM"), like a PJL command ("@PJL") or like the end of a document that did not begin ("%%EndDocument")
/// are changed in one of their first two bytes: to a comment of no meaning ("% OID_ATT_", "%PJL"). A Ctrl-D
/// ahead of "%!" becomes a blank wherever it stands. The size stays what it was, so that counts of bytes in
/// the document stay right, and copying a copy changes nothing.
///
/// A device may know nothing of binary sections that the document announces ("%%BeginBinary: N",
/// "%%BeginData: N Binary Bytes") and really ends after N bytes. Lines in them are changed like others; so
/// are "%%BeginDocument" and "%%EndDocument", which count for nothing there. A Ctrl-D within a line stays, as
/// what looks like that one is found in many pictures.
///
/// Throws quelm::Error when the document holds a UEL: a device ends the job there wherever it stands, and
/// inside of binary data no other bytes would mean the same.
DocumentEnd copyDocument(const DocumentBytes& document, JobSink& sink, const Progress& progress = {});

} // namespace quelm

#endif
