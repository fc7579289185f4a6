// Opens the document of a print job and hands out its PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_DOCUMENT_H
#define DRIVER_DOCUMENTS_DOCUMENT_H

#include "base/file_handle.h"
#include "base/ghostscript/ghostscript.h"
#include "driver/documents/document_bytes.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// A PostScript program to be faxed: one that was run from its beginning to its end, or was made from a whole
/// PDF. It is kept in an unnamed file, so that what is done to the user's file meanwhile changes nothing.
/// What a document is, its content says, not its name:
///
/// - PostScript ("%!"), as it stands or as printer drivers wrap it: between UELs and PJL lines, between
///   Ctrl-Ds, behind a byte order mark, or as the PostScript part of an EPS file with a preview. The
///   wrapping is not part of the document.
/// - PDF ("%PDF-" within the first 1,024 bytes, or behind PJL lines), which Ghostscript turns into
///   PostScript.
class Document final : public DocumentBytes {
public:
    /// Opens `path`; "-" is standard input, and a pipe is read to its end. Throws quelm::Error with
    /// one line when there is no such file, it cannot be read, is a folder, a device or empty, is
    /// neither PostScript nor PDF, could not be converted, or fails when it is run; also when Ghostscript,
    /// which does both within `bounds`, is not installed.
    static Document open(const std::string& path, const GhostscriptBounds& bounds = {});

    const std::string& path() const override { return path_; }

    /// The last component of `path`, for a job's title; "Standard input" for "-".
    std::string name() const;

    /// How many bytes of PostScript there are.
    std::uint64_t size() const override { return size_; }

    /// True for one figure meant for embedding (EPS), which need not put out its page itself.
    bool isEncapsulated() const { return encapsulated_; }

    /// How many pages there are, as they were counted when the document was opened; nothing for PostScript
    /// that does not let itself be counted. A figure has one, whether it puts it out itself or not.
    std::optional<std::size_t> pages() const { return pages_; }

    std::size_t read(std::uint64_t offset, char* bytes, std::size_t size) const override;

    /// Lines for the user about a document that is usable but was not in order.
    const std::vector<std::string>& warnings() const { return warnings_; }

    /// True when `path` names the file that this document was opened from.
    bool isSameFile(const std::string& path) const;

private:
    Document() = default;

    std::string path_;
    FileHandle postScript_;
    std::uint64_t size_ = 0;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    bool encapsulated_ = false;
    std::optional<std::size_t> pages_;
    std::vector<std::string> warnings_;
};

} // namespace quelm

#endif
