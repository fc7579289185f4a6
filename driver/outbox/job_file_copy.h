// Copies the files of jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_JOB_FILE_COPY_H
#define DRIVER_OUTBOX_JOB_FILE_COPY_H

#include "base/file_handle.h"
#include "driver/documents/document_bytes.h"
#include "driver/documents/sink.h"

#include <cstdint>
#include <string>

namespace quelm {

/// Copies a file from its start into another one, durably; `path` names that in the quelm::Error of a
/// failure.
void copyJobFile(const FileHandle& from, const FileHandle& into, const std::string& path);

/// Writes a document's PostScript into a file, durably.
void copyJobDocument(const DocumentBytes& document, const FileHandle& into, const std::string& path);

/// Hands the bytes from `begin` up to `end` of a file to a sink. Throws quelm::Error when it ends before.
void readJobFile(const FileHandle& file, std::uint64_t begin, std::uint64_t end, JobSink& sink,
                 const std::string& path);

/// Makes what was written to a file durable.
void synchroniseJobFile(const FileHandle& file, const std::string& path);

} // namespace quelm

#endif
