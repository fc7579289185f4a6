// The folder of one job of the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_JOB_FOLDER_H
#define DRIVER_OUTBOX_JOB_FOLDER_H

#include "base/file_handle.h"

#include <string>
#include <utility>

namespace quelm {

/// The folder of one job, held open, so that what is put in its place meanwhile counts for nothing. Its files
/// are plain files of this user, which nobody else can read:
///
/// - "stream": the print stream, but for the line of a credit card;
/// - "card": that line;
/// - "document/NAME": the document, below its own name;
/// - "lock": locked by the process that makes the job or hands it over.
///
/// Operations throw quelm::Error.
class JobFolder {
public:
    JobFolder(FileHandle folder, std::string path) : folder_(std::move(folder)), path_(std::move(path)) {}

    const std::string& path() const { return path_; }
    void moved(std::string path) { path_ = std::move(path); }

    /// Makes a new file, or opens one to read it.
    [[nodiscard]] FileHandle make(const std::string& name) const;
    [[nodiscard]] FileHandle open(const std::string& name) const;

    /// Makes the folder of the document.
    [[nodiscard]] JobFolder makeDocumentFolder() const;

    /// Gives files of another job, which never change, to this one too.
    void take(const JobFolder& other, const std::string& name) const;
    void takeDocument(const JobFolder& other, const std::string& name) const;

    /// Makes the names in the folder durable.
    void synchronise() const;

    /// Removes a file, durably; one that is not there is removed.
    void remove(const std::string& name) const;

    /// Takes away all that is in it, as far as that can be done.
    void empty() const noexcept;

    /// Locks the job for this process, as long as the handle lives; not open when another process has it, or
    /// the job was removed.
    [[nodiscard]] FileHandle lock() const;

private:
    FileHandle folder_;
    std::string path_;
};

} // namespace quelm

#endif
