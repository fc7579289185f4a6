// Reads the stream around its credit card.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/job_stream.h"

#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/outbox/job_file_copy.h"
#include "driver/outbox/outbox_failure.h"

#include <sys/stat.h>

#include <cerrno>

namespace quelm {
namespace {

void requireSize(const FileHandle& file, std::uint64_t size, const std::string& path)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        failOutbox(path, systemReason(errno));
    if (static_cast<std::uint64_t>(status.st_size) != size)
        failOutbox(path, localized("it has not the size that it had; send the document anew"));
}

} // namespace

void writeStream(const JobFolder& files, const LogRow& row, JobSink& sink)
{
    const std::string path = files.path() + "/stream";
    const std::uint64_t size = row.size - row.cardSize;
    const FileHandle stream = files.open("stream");
    requireSize(stream, size, path);
    if (row.cardSize == 0) {
        readJobFile(stream, 0, size, sink, path);
        return;
    }
    const std::string cardPath = files.path() + "/card";
    const FileHandle card = files.open("card");
    requireSize(card, row.cardSize, cardPath);
    readJobFile(stream, 0, row.cardAt, sink, path);
    readJobFile(card, 0, row.cardSize, sink, cardPath);
    readJobFile(stream, row.cardAt, size, sink, path);
}

std::string preparedName(const LogRow& row) { return ".quelm-outbox-" + row.token; }

} // namespace quelm
