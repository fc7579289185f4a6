// Writes the job of a session, with its document, to where the user wants it.
#ifndef DRIVER_CLI_WRITE_DOCUMENT_H
#define DRIVER_CLI_WRITE_DOCUMENT_H

#include "driver/core/fax_session.h"
#include "driver/jobs/document.h"

#include <string>

namespace quelm {

/// Opens the document, and tells the user on standard error when something is amiss with it.
Document openDocument(const std::string& path);

/// Writes one print stream to `output`, "-" for standard output, with progress on a terminal.
/// Throws Error, and the output is what it was, when that fails.
void writeDocument(FaxSession& session, Pdl pdl, const Document& document, const std::string& output);

} // namespace quelm

#endif
