// The file that a document lies in, and where in it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_DOCUMENT_FILE_H
#define DRIVER_DOCUMENTS_DOCUMENT_FILE_H

#include "base/file_handle.h"
#include "driver/documents/document_bytes.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace quelm {

/// The name of a document in lines for the user: "standard input" for "-".
std::string shownDocument(const std::string& path);

/// The name of the driver's own copy of a document, which says where there is perhaps no room for it.
std::string shownCopy(const std::string& path);

/// A PostScript or PDF document as it was found: an open file, without what printer drivers wrap around it.
class DocumentFile final : public DocumentBytes {
public:
    /// Opens `path`; "-" is standard input, and a pipe is read to its end. Throws quelm::Error with
    /// one line when there is no such file, it cannot be read, is a folder, a device or empty, or is
    /// neither PostScript nor PDF.
    explicit DocumentFile(const std::string& path);

    const std::string& path() const override { return path_; }
    std::uint64_t size() const override { return end_ - begin_; }
    std::size_t read(std::uint64_t offset, char* bytes, std::size_t size) const override;

    bool isPdf() const { return pdf_; }

    /// True for PostScript that is one figure meant for embedding (EPS).
    bool isEncapsulated() const { return encapsulated_; }

    /// Whether the file holds the document alone, and may be opened once more: one that is standard input may
    /// be somebody else's.
    bool standsAlone() const;
    const FileHandle& file() const { return file_; }

    /// An unnamed file that holds the document alone, from its start.
    FileHandle copy() const;

    /// Throws quelm::Error when the file was written to since it was opened: what was read of it may be part
    /// of one document and part of another.
    void requireUnchanged() const;

    dev_t device() const { return device_; }
    ino_t inode() const { return inode_; }

private:
    void openFile();
    void spool();
    void locate();
    std::string window(std::uint64_t offset, std::uint64_t size) const;

    std::string path_;
    FileHandle file_;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    std::optional<timespec> written_; ///< when the file was last written to; none for a copy of our own
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
    bool pdf_ = false;
    bool encapsulated_ = false;
};

} // namespace quelm

#endif
