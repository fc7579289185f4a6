// Makes PostScript of a document's file, and sees to it that it can be run to its end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/documents/document_copy.h"
#include "driver/documents/document_file.h"
#include "driver/documents/file_sink.h"
#include "driver/documents/pdf_conversion.h"
#include "driver/documents/postscript_check.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace quelm {
namespace {

/// The document as it goes into a job.
FileHandle copyForJob(const DocumentFile& file, const GhostscriptBounds& bounds)
{
    FileHandle copy = makeUnnamedFile();
    FileSink sink(copy, shownCopy(file.path()));
    copyDocument(file, sink, [&](std::uint64_t, std::uint64_t) {
        if (bounds.stop.stop_requested())
            throw Error(localized("%s: the document was given up", shownDocument(file.path())));
    });
    return copy;
}

} // namespace

Document Document::open(const std::string& path, const GhostscriptBounds& bounds)
{
    DocumentFile file(path);
    Document document;
    document.path_ = path;
    document.device_ = file.device();
    document.inode_ = file.inode();
    document.encapsulated_ = file.isEncapsulated();
    const std::string name = shownDocument(path);
    if (file.isPdf()) {
        const FileHandle copy = file.standsAlone() ? FileHandle() : file.copy();
        ConvertedPdf converted = convertPdf(file.standsAlone() ? file.file() : copy, name, bounds);
        file.requireUnchanged();
        document.postScript_ = std::move(converted.postScript);
        document.pages_ = converted.pages;
        if (!converted.warning.empty())
            document.warnings_.push_back(std::move(converted.warning));
    } else {
        document.postScript_ = copyForJob(file, bounds);
        file.requireUnchanged();
        document.pages_ = checkPostScript(document.postScript_, name, bounds);
        // A figure may leave it to the job to put out its page.
        if (document.pages_ == 0 && document.encapsulated_)
            document.pages_ = 1;
        if (document.pages_ == 0)
            document.warnings_.push_back(
                localized("%s: puts out no page; the fax shows nothing of it", name));
    }

    struct stat status = {};
    if (::fstat(document.postScript_.get(), &status) != 0)
        throw Error(localized("%s: its PostScript cannot be read: %s", name, systemReason(errno)));
    document.size_ = static_cast<std::uint64_t>(status.st_size);
    return document;
}

std::string Document::name() const
{
    if (path_ == "-")
        return "Standard input"; // in every language: it goes into the job
    return std::filesystem::path(path_).filename().string();
}

std::size_t Document::read(std::uint64_t offset, char* bytes, std::size_t size) const
{
    const std::uint64_t left = offset < size_ ? size_ - offset : 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, size));
    const std::string name = shownDocument(path_);
    const std::size_t count =
        readFully(postScript_.get(), bytes, wanted, static_cast<long long>(offset), name);
    if (count < wanted)
        throw Error(localized("%s: its PostScript became shorter while it was read; try again", name));
    return count;
}

bool Document::isSameFile(const std::string& path) const
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_dev == device_ &&
           status.st_ino == inode_;
}

} // namespace quelm
