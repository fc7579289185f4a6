// The print stream of a job, put together from the job's files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_JOB_STREAM_H
#define DRIVER_OUTBOX_JOB_STREAM_H

#include "driver/documents/sink.h"
#include "driver/outbox/log_row.h"
#include "driver/outbox/outbox_folder.h"

#include <string>

namespace quelm {

/// Writes the whole stream, with the line of a credit card in its place. Throws quelm::Error when a file is
/// not what it was.
void writeStream(const JobFolder& files, const LogRow& row, JobSink& sink);

/// The name that a job has beside its destination, an ordinary file, until it takes its place.
[[nodiscard]] std::string preparedName(const LogRow& row);

} // namespace quelm

#endif
