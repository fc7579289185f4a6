// Opens a document on a thread of its own, and readies its pages for a look at them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_DOCUMENT_LOADING_H
#define DRIVER_DESKTOP_SENDING_DOCUMENT_LOADING_H

#include "base/file_io.h"
#include "driver/desktop/toolkit/background_task.h"
#include "driver/documents/document.h"

#include <functional>
#include <memory>
#include <string>

namespace quelm {

/// A document that can be sent. Reading it does not change it: threads may share it.
struct LoadedDocument {
    Document document;
    FileHandle pages; ///< a print stream of the document alone, as a job carries it
};

/// What became of a document: the document, or a line that says why there is none.
struct LoadingResult {
    std::shared_ptr<const LoadedDocument> document;
    std::string trouble;
};

/// Opens the file at once, on the calling thread. Throws quelm::Error with one line for what `Document`
/// refuses, for what is no file, for a document that no job can carry, and soon after `stop` is requested.
[[nodiscard]] LoadedDocument loadDocument(const std::string& path, const std::stop_token& stop);

/// Opens one document at a time, without keeping the main loop from its work.
class DocumentLoading {
public:
    /// Called on the main loop with the end of each loading that was not replaced by another one.
    using Ended = std::function<void(const LoadingResult&)>;

    explicit DocumentLoading(Ended ended) : ended_(std::move(ended)) {}

    /// Gives up a document that is being opened, and opens this one.
    void start(const std::string& path);
    bool running() const { return task_.running(); }

private:
    Ended ended_;
    BackgroundTask task_;
};

} // namespace quelm

#endif
