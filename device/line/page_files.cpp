// Opens the files at both ends of a call, by names that are short enough for the modem library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/page_files.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/temporary_file.h"
#include "base/translation.h"
#include "device/tiff/page_reader.h"
#include "device/tiff/page_writer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace quelm::device {
namespace {

/// The library takes no name of more than 255 bytes. The system has a short one for whatever is open.
std::string nameOf(const FileHandle& handle) { return "/proc/self/fd/" + std::to_string(handle.get()); }

std::string folderOf(const std::string& file)
{
    const std::string folder = std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

} // namespace

SentPages::SentPages(const std::string& file) : file_(::open(file.c_str(), O_RDONLY | O_CLOEXEC))
{
    struct stat status = {};
    if (!file_.isOpen() || ::fstat(file_.get(), &status) != 0)
        throw Error(localized("%s: the pages cannot be read: %s", file, systemReason(errno)));
    bytes_ = static_cast<std::uint64_t>(status.st_size);
    count_ = pagesInFile(shortName());
    if (count_ == 0)
        throw Error(localized("%s: there are no pages in it that can be faxed", file));
}

std::string SentPages::shortName() const { return nameOf(file_); }

ReceivedPages::ReceivedPages(std::string keepAs)
    : keepAs_(std::move(keepAs)), name_(temporaryName()), watch_(folderOf(keepAs_))
{
    const std::string folder = folderOf(keepAs_);
    folder_ = FileHandle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder_.isOpen())
        lock_ = makeTemporaryFile(folder_.get(), name_);
    if (!lock_.isOpen())
        failWriting(keepAs_, errno);
}

ReceivedPages::~ReceivedPages() { ::unlinkat(folder_.get(), name_.c_str(), 0); }

std::string ReceivedPages::shortName() const { return nameOf(folder_) + "/" + name_; }

int ReceivedPages::keep(int most)
{
    if (most == 0)
        return 0;
    try {
        PageReader received(shortName(), keepAs_);
        if (received.count() < most)
            failKeeping();
        PageWriter kept(keepAs_, most);
        for (int page = 0; page < most; ++page) {
            kept.copy(received);
            received.next();
        }
        kept.finish();
        return most;
    } catch (const NoRoom&) {
        throw;
    } catch (const Error&) {
        failKeeping();
    }
}

void ReceivedPages::requireRoom()
{
    watch_.require();
    requireRoomBehind(lock_.get(), keepAs_);
}

void ReceivedPages::failKeeping()
{
    requireRoom();
    throw Error(localized("%s: the pages that were received cannot be kept", keepAs_));
}

} // namespace quelm::device
