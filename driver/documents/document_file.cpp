// Opens the file, and finds out what is in it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document_file.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/documents/file_sink.h"
#include "driver/documents/print_wrapping.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t headSize = 64 * 1024;
constexpr std::size_t tailSize = 8 * 1024;
constexpr std::size_t blockSize = 256 * 1024;

constexpr const char* standardInput = "-";

bool isPostScript(std::string_view head) { return head.starts_with("%!"); }

bool startsPdf(std::string_view head)
{
    // Readers of PDF accept other bytes ahead of it, up to this many.
    constexpr std::size_t pdfSearchSize = 1024;
    return head.substr(0, pdfSearchSize).find("%PDF-") != std::string_view::npos;
}

bool isTaggedBinary(std::string_view head) { return head.starts_with("\001M"); }

std::string_view firstLine(std::string_view head) { return head.substr(0, head.find_first_of("\r\n")); }

} // namespace

std::string shownDocument(const std::string& path)
{
    return path == standardInput ? localized("standard input") : path;
}

std::string shownCopy(const std::string& path)
{
    // Translators: the document and a folder.
    return localized("the copy of %s in %s", shownDocument(path), temporaryFolder());
}

DocumentFile::DocumentFile(const std::string& path) : path_(path)
{
    openFile();
    if (end_ == 0)
        throw Error(localized("%s: is empty; there is nothing to fax", shownDocument(path)));
    locate();
}

void DocumentFile::openFile()
{
    const std::string who = shownDocument(path_);
    // Without O_NONBLOCK a fifo that nobody writes to would never be opened.
    file_ = FileHandle(path_ == standardInput
                           ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                           : ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file_.isOpen() || ::fstat(file_.get(), &status) != 0)
        throw Error(errno == ENOENT ? localized("%s: there is no such document", who)
                                    : localized("%s: cannot be opened: %s", who, systemReason(errno)));
    if (S_ISDIR(status.st_mode))
        throw Error(localized("%s: is a folder; name a PostScript or PDF document in it", who));
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode))
        throw Error(localized("%s: is a device, not a document", who));

    device_ = status.st_dev;
    inode_ = status.st_ino;
    if (S_ISREG(status.st_mode) && (path_ != standardInput || ::lseek(file_.get(), 0, SEEK_CUR) == 0)) {
        end_ = static_cast<std::uint64_t>(status.st_size);
        written_ = status.st_mtim;
    } else {
        spool();
    }
}

void DocumentFile::spool()
{
    if (const int flags = ::fcntl(file_.get(), F_GETFL); path_ != standardInput && flags >= 0)
        ::fcntl(file_.get(), F_SETFL, flags & ~O_NONBLOCK);
    FileHandle copy = makeUnnamedFile();
    FileSink sink(copy, shownCopy(path_));
    std::string block(blockSize, '\0');
    constexpr long long whereItStands = -1;
    while (const auto size =
               readFully(file_.get(), block.data(), block.size(), whereItStands, shownDocument(path_))) {
        sink.write(std::string_view(block).substr(0, size));
        end_ += size;
    }
    file_ = std::move(copy);
}

std::string DocumentFile::window(std::uint64_t offset, std::uint64_t size) const
{
    std::string bytes(static_cast<std::size_t>(size), '\0');
    bytes.resize(readFully(file_.get(), bytes.data(), bytes.size(), static_cast<long long>(offset),
                           shownDocument(path_)));
    return bytes;
}

void DocumentFile::locate()
{
    const std::string who = shownDocument(path_);
    std::string head = window(0, std::min<std::uint64_t>(end_, headSize));
    if (const auto section = readPreviewHeader(head)) {
        if (section->size == 0 || section->offset > end_ || section->size > end_ - section->offset)
            throw Error(localized(
                "%s: the EPS file is damaged: its PostScript would end behind the end of the file", who));
        begin_ = section->offset;
        end_ = section->offset + section->size;
        head = window(begin_, std::min<std::uint64_t>(size(), headSize));
    }

    const Prologue prologue = measurePrologue(head);
    begin_ += prologue.size;
    head.erase(0, prologue.size);
    if (isPostScript(head)) {
        encapsulated_ = firstLine(head).find("EPSF-") != std::string_view::npos;
        const std::uint64_t tail = std::min<std::uint64_t>(size(), tailSize);
        end_ = end_ - tail + findEpilogue(window(end_ - tail, tail));
        return;
    }
    if (startsPdf(head)) {
        pdf_ = true;
        return;
    }
    if (isTaggedBinary(head))
        throw Error(
            localized("%s: is in tagged binary form (TBCP), for serial lines; print it to a file again as "
                      "plain PostScript",
                      who));
    if (!prologue.language.empty() && prologue.language != "POSTSCRIPT")
        // Translators: the document and a printer language, such as PCLXL.
        throw Error(localized("%s: is a print file in %s, not in PostScript; print it to a file again with a "
                              "PostScript driver",
                              who, prologue.language));
    throw Error(localized("%s: is neither PostScript nor PDF; save or print it as PDF and fax that", who));
}

bool DocumentFile::standsAlone() const { return begin_ == 0 && (path_ != standardInput || !written_); }

FileHandle DocumentFile::copy() const
{
    FileHandle copy = makeUnnamedFile();
    FileSink sink(copy, shownCopy(path_));
    std::string block(blockSize, '\0');
    for (std::uint64_t offset = 0; const auto count = read(offset, block.data(), block.size());
         offset += count)
        sink.write(std::string_view(block).substr(0, count));
    return copy;
}

void DocumentFile::requireUnchanged() const
{
    struct stat status = {};
    if (written_ && (::fstat(file_.get(), &status) != 0 || status.st_mtim.tv_sec != written_->tv_sec ||
                     status.st_mtim.tv_nsec != written_->tv_nsec))
        throw Error(localized("%s: was changed while it was read; try again when it is complete",
                              shownDocument(path_)));
}

std::size_t DocumentFile::read(std::uint64_t offset, char* bytes, std::size_t size) const
{
    const std::uint64_t left = offset < this->size() ? this->size() - offset : 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, size));
    const auto position = static_cast<long long>(begin_ + offset);
    const std::size_t count = readFully(file_.get(), bytes, wanted, position, shownDocument(path_));
    if (count < wanted)
        throw Error(localized("%s: became shorter while it was read; try again when it is complete",
                              shownDocument(path_)));
    return count;
}

} // namespace quelm
