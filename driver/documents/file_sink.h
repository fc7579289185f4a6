// Takes a job's or a document's bytes into an open file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_FILE_SINK_H
#define DRIVER_DOCUMENTS_FILE_SINK_H

#include "base/file_io.h"
#include "driver/documents/sink.h"

#include <string>
#include <utility>

namespace quelm {

/// Writes into a file, which stays the caller's and outlives the sink.
class FileSink final : public JobSink {
public:
    /// `name` names the file in the line of the quelm::Error that a failure throws.
    FileSink(const FileHandle& file, std::string name) : file_(file), name_(std::move(name)) {}

    void write(std::string_view bytes) override
    {
        const WriteSignalsIgnored failuresOnly;
        writeAll(file_.get(), bytes, name_);
    }

private:
    const FileHandle& file_;
    std::string name_;
};

} // namespace quelm

#endif
