// Reads and writes the files of jobs piece by piece.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/job_file_copy.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/documents/file_sink.h"
#include "driver/outbox/outbox_failure.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace quelm {
namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

} // namespace

void copyJobFile(const FileHandle& from, const FileHandle& into, const std::string& path)
{
    FileSink sink(into, path);
    std::string block(blockSize, '\0');
    long long offset = 0;
    while (const auto count = readFully(from.get(), block.data(), block.size(), offset, path)) {
        sink.write(std::string_view(block).substr(0, count));
        offset += static_cast<long long>(count);
    }
    synchroniseJobFile(into, path);
}

void copyJobDocument(const DocumentBytes& document, const FileHandle& into, const std::string& path)
{
    FileSink sink(into, path);
    std::string block(blockSize, '\0');
    for (std::uint64_t offset = 0; const auto count = document.read(offset, block.data(), block.size());
         offset += count)
        sink.write(std::string_view(block).substr(0, count));
    synchroniseJobFile(into, path);
}

void readJobFile(const FileHandle& file, std::uint64_t begin, std::uint64_t end, JobSink& sink,
                 const std::string& path)
{
    std::string block(blockSize, '\0');
    while (begin < end) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(end - begin, block.size()));
        const auto count = readFully(file.get(), block.data(), wanted, static_cast<long long>(begin), path);
        if (count < wanted)
            failOutbox(path, localized("it became shorter than it was; send the document anew"));
        sink.write(std::string_view(block).substr(0, count));
        begin += count;
    }
}

void synchroniseJobFile(const FileHandle& file, const std::string& path)
{
    if (::fsync(file.get()) != 0)
        throw Error(localized("%s: cannot be written: %s", path, systemReason(errno)));
}

} // namespace quelm
