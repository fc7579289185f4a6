// Makes, checks and locks the folder of a device's state.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/state_folder.h"

#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/jobs/state_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>

namespace quelm::device {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view callHead = "call-";
constexpr std::string_view pagesTail = ".tif";
constexpr std::size_t longestNumber = 100; // of a telephone number, as the exchange bounds it

/// Whether a folder is a device's, or may become one: it is nobody's yet, or was made for a device's
/// exchange.
bool isForDevice(const fs::path& path)
{
    if (isFile(path / "device.db"))
        return true;
    std::error_code error;
    bool isOurs = true;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        isOurs = isOurs && entry->path().filename() == "exchange.conf" && isFile(entry->path());
    return isOurs && !error;
}

/// Nobody's home or shared folder is closed to others by a slip of the keys.
void requireOwnFolder(const fs::path& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0) {
        if (errno != ENOENT)
            failState(path, errno);
        return;
    }
    constexpr mode_t forOthers = S_IRWXG | S_IRWXO;
    if (S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() && (status.st_mode & forOthers) != 0 &&
        !isForDevice(path))
        failState(path, localized("it holds other files, and others may enter it; name a folder that is the "
                                  "device's alone, or close this one with chmod 700 %s",
                                  oneLine(path)));
}

fs::path absolutePath(const fs::path& folder)
{
    std::error_code error;
    fs::path path = fs::absolute(folder, error).lexically_normal();
    if (error)
        failState(folder, error.value());
    return path.has_filename() ? path : path.parent_path();
}

[[noreturn]] void failUnmade(const fs::path& path, int error)
{
    // Translators: why a folder cannot be made.
    failState(path, localized("it cannot be made (%s); name another folder", systemReason(error)));
}

FileHandle lockedFile(const fs::path& path)
{
    makeStateFile(path);
    FileHandle file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (!file.isOpen())
        failState(path, errno);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    if (::fcntl(file.get(), F_OFD_SETLK, &lock) == 0)
        return file;
    if (errno == EAGAIN || errno == EACCES)
        failState(path.parent_path(),
                  localized("another device works with it; end that one, or name another folder"));
    failState(path, errno);
}

} // namespace

StateFolder::StateFolder(const fs::path& folder) : path_(absolutePath(folder))
{
    std::error_code error;
    if (!path_.parent_path().empty())
        fs::create_directories(path_.parent_path(), error);
    if (error)
        failUnmade(path_.parent_path(), error.value());
    requireOwnFolder(path_);
    if (::mkdir(path_.c_str(), S_IRWXU) == 0)
        synchroniseFolder(path_.parent_path());
    else if (errno != EEXIST)
        failUnmade(path_, errno);
    makeStateFolder(path_);
    lock_ = lockedFile(path_ / "lock");
    for (const char* name : {"incoming", "jobs", "received", "printed", "reports"})
        makeStateFolder(path_ / name);
    for (const auto& entry : fs::directory_iterator(incoming(), error))
        if (callOf(entry.path()) == 0)
            removeQuietly(entry.path());
}

fs::path StateFolder::jobFile(int job) const { return path_ / "jobs" / std::to_string(job) / "job"; }

fs::path StateFolder::halfTakenMark(int job) const { return jobFile(job).parent_path() / "half-taken"; }

fs::path StateFolder::pagesFile(int job) const { return path_ / "jobs" / std::to_string(job) / "pages.tif"; }

fs::path StateFolder::printedFile(int job) const
{
    return path_ / "printed" / ("job-" + std::to_string(job) + ".tif");
}

fs::path StateFolder::reportPdf(int job) const
{
    return path_ / "reports" / ("job-" + std::to_string(job) + ".pdf");
}

fs::path StateFolder::reportText(int job) const
{
    return path_ / "reports" / ("job-" + std::to_string(job) + ".txt");
}

fs::path StateFolder::incomingCall(int call) const
{
    return incoming() / (std::string(callHead) + std::to_string(call) + std::string(pagesTail));
}

fs::path StateFolder::receivedCall(const std::string& number, int call) const
{
    if (number.empty() || number.size() > longestNumber ||
        number.find_first_not_of("0123456789sp") != std::string::npos)
        failState(received(), localized("a call's number is none; restore the folder from a copy"));
    return received() / number / incomingCall(call).filename();
}

int StateFolder::callOf(const fs::path& incoming)
{
    return numberIn(incoming.filename().string(), callHead, pagesTail);
}

} // namespace quelm::device
