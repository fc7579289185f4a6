// Opens the document of a print job and hands out its PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_DOCUMENT_H
#define DRIVER_DOCUMENTS_DOCUMENT_H

#include "base/file_io.h"
#include "driver/documents/pdf_conversion.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quelm {

/// A PostScript program to be faxed, read from a file that is kept open. What a document is, its
/// content says, not its name:
///
/// - PostScript ("%!"), as it stands or as printer drivers wrap it: between UELs and PJL lines, between
///   Ctrl-Ds, behind a byte order mark, or as the PostScript part of an EPS file with a preview. The
///   wrapping is not part of the document.
/// - PDF ("%PDF-" within the first 1,024 bytes, or behind PJL lines), which Ghostscript turns into
/// PostScript.
class Document {
public:
    /// Opens `path`; "-" is standard input, and a pipe is read to its end. Throws quelm::Error with
    /// one line when there is no such file, it cannot be read, is a folder, a device or empty, is
    /// neither PostScript nor PDF, or could not be converted.
    static Document open(const std::string& path, const PdfConversion& conversion = {});

    /// The document as the user named it.
    const std::string& path() const { return path_; }

    /// The last component of `path`, for a job's title; "Standard input" for "-".
    std::string name() const;

    /// How many bytes of PostScript there are.
    std::uint64_t size() const { return end_ - begin_; }

    /// True for one figure meant for embedding (EPS), which need not put out its page itself.
    bool isEncapsulated() const { return encapsulated_; }

    /// Copies at most `size` bytes of PostScript from `offset` on; fewer only at its end. Throws
    /// quelm::Error when the file cannot be read or became shorter meanwhile.
    std::size_t read(std::uint64_t offset, char* bytes, std::size_t size) const;

    /// Lines for the user about a document that is usable but was not in order.
    const std::vector<std::string>& warnings() const { return warnings_; }

    /// True when `path` names the file that this document was opened from.
    bool isSameFile(const std::string& path) const;

private:
    Document() = default;

    void openFile();
    void spool();
    void locate(const PdfConversion& conversion);
    std::string window(std::uint64_t offset, std::uint64_t size) const;
    void replaceByPostScript(const PdfConversion& conversion);

    std::string path_;
    FileHandle file_;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
    bool encapsulated_ = false;
    std::vector<std::string> warnings_;
};

} // namespace quelm

#endif
