// Opens a document, and writes it into a print stream as a job would.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/document_loading.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/documents/document_file.h"
#include "driver/documents/file_sink.h"
#include "driver/jobs/job_writer.h"

#include <filesystem>
#include <utility>

namespace quelm {
namespace {

/// A fifo would keep the thread waiting for whoever writes to it.
void requireFile(const std::string& path)
{
    std::error_code failure;
    const auto type = std::filesystem::status(path, failure).type();
    if (type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::socket)
        throw Error(localized("%s: is no file; save the document to a file and open that", path));
}

} // namespace

LoadedDocument loadDocument(const std::string& path, const std::stop_token& stop)
{
    requireFile(path);
    GhostscriptBounds bounds;
    bounds.stop = stop;
    LoadedDocument loaded{Document::open(path, bounds), makeUnnamedFile()};

    FileSink sink(loaded.pages, shownCopy(path));
    JobFacts facts;
    facts.progress = [&stop](std::uint64_t, std::uint64_t) {
        if (stop.stop_requested())
            throw Error(localized("the document was given up"));
    };
    writeDocumentAlone(loaded.document, sink, facts);
    return loaded;
}

void DocumentLoading::start(const std::string& path)
{
    const auto result = std::make_shared<LoadingResult>();
    task_.start(
        [path, result](const std::stop_token& stop) {
            try {
                result->document = std::make_shared<const LoadedDocument>(loadDocument(path, stop));
            } catch (const std::exception& error) {
                result->trouble = error.what();
            }
        },
        [this, result] { ended_(*result); });
}

} // namespace quelm
